#include "app/cli/input_files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <system_error>

#include "base/display_text.h"
#include "base/system/file_io.h"

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

std::vector<InputFile> SongsBelow(const fs::path& folder) {
    std::vector<InputFile> songs;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied,
                                           error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_regular_file(unknown) && HasSongExtension(entry->path())) {
            songs.push_back({entry->path(), entry->path().lexically_relative(folder)});
        }
    }
    std::sort(songs.begin(), songs.end(), [](const InputFile& left, const InputFile& right) {
        return left.relative < right.relative;
    });
    return songs;
}

} // namespace

fs::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string InputFile::Name() const {
    return standardInput ? std::string(kStandardInput) : DisplayPath(system::PathText(path));
}

std::vector<InputFile> ExpandInputs(std::span<const std::string> names,
                                    std::vector<std::string>& emptyFolders) {
    std::vector<InputFile> files;
    for (const std::string& name : names) {
        const fs::path path = PathOf(name);
        std::error_code error;
        if (name == kStandardInput) {
            files.push_back({"stdin.mid", "stdin.mid", true});
        } else if (!fs::is_directory(path, error)) {
            files.push_back({path, path.filename()});
        } else {
            std::vector<InputFile> songs = SongsBelow(path);
            if (songs.empty()) {
                emptyFolders.push_back(DisplayPath(name));
            }
            files.insert(files.end(), songs.begin(), songs.end());
        }
    }
    return files;
}

} // namespace tracksmith::cli
