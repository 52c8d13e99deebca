#include "app/cli/input_files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <system_error>

#include "base/display_text.h"
#include "base/system/file_io.h"
#include "base/system/folder_listing.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStandardInput = "-";

bool HasSongExtension(const fs::path& path) {
    constexpr std::array<std::string_view, 4> kExtensions{".mid", ".midi", ".kar", ".smf"};
    std::string extension = system::PathText(path.extension());
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

// Goes through a folder and everything below it. A folder that cannot be read, or not to its end,
// does not keep the others from being read.
class FolderSearch {
public:
    FolderSearch(const fs::path& top, std::vector<FolderFault>& faults)
        : top_(top), faults_(faults), open_{top} {}

    std::vector<InputFile> Songs() {
        while (!open_.empty()) {
            const fs::path folder = std::move(open_.back());
            open_.pop_back();
            Read(folder);
        }
        std::ranges::sort(songs_, {}, &InputFile::relative);
        return std::move(songs_);
    }

private:
    void Read(const fs::path& folder) {
        const system::FolderListing listing = system::ListFolder(folder);
        for (const fs::path& name : listing.names) {
            Take(folder / name);
        }
        if (listing.error) {
            faults_.push_back({folder, listing.error});
        }
    }

    void Take(const fs::path& entry) {
        std::error_code unknown;
        if (fs::symlink_status(entry, unknown).type() == fs::file_type::directory) {
            open_.push_back(entry);
        } else if (fs::is_regular_file(entry, unknown) && HasSongExtension(entry)) {
            songs_.push_back({entry, entry.lexically_relative(top_)});
        }
    }

    const fs::path& top_;
    std::vector<FolderFault>& faults_;
    std::vector<fs::path> open_;
    std::vector<InputFile> songs_;
};

} // namespace

fs::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string InputFile::Name() const {
    return DisplayPath(ExactName());
}

std::string InputFile::ExactName() const {
    return standardInput ? std::string(kStandardInput) : system::PathText(path);
}

std::string FolderFault::Name() const {
    return DisplayPath(system::PathText(folder));
}

std::vector<InputFile> ExpandInputs(std::span<const std::string> names,
                                    std::vector<FolderFault>& faults) {
    std::vector<InputFile> files;
    for (const std::string& name : names) {
        const fs::path path = PathOf(name);
        std::error_code error;
        if (name == kStandardInput) {
            files.push_back({"stdin.mid", "stdin.mid", true});
        } else if (!fs::is_directory(path, error)) {
            files.push_back({path, path.filename()});
        } else {
            const std::size_t former = faults.size();
            std::vector<InputFile> songs = FolderSearch(path, faults).Songs();
            if (songs.empty() && faults.size() == former) {
                faults.push_back({path, {}});
            }
            files.insert(files.end(), songs.begin(), songs.end());
        }
    }
    return files;
}

} // namespace tracksmith::cli
