#include "app/cli/input_files.h"

#include <string_view>
#include <system_error>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"
#include "base/system/reachable_path.h"

#include "app/song_folder.h"
#include "song/event_walker.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStandardInput = "-";

void AddFolder(const fs::path& path, std::vector<InputFile>& files,
               std::vector<FolderFault>& faults) {
    app::SongFolder found = app::FindSongs(path);
    if (found.songs.empty() && found.unread.empty()) {
        faults.push_back({path, {}});
    }
    for (app::UnreadFolder& each : found.unread) {
        faults.push_back({std::move(each.folder), each.error});
    }
    for (app::SongInFolder& song : found.songs) {
        files.push_back({std::move(song.path), std::move(song.relative)});
    }
}

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
        } else if (!fs::is_directory(system::ReachablePath(path), error)) {
            files.push_back({path, path.filename()});
        } else {
            AddFolder(path, files, faults);
        }
    }
    return files;
}

std::vector<fs::path> PathsOf(std::span<const InputFile> inputs) {
    std::vector<fs::path> paths;
    for (const InputFile& input : inputs) {
        if (!input.standardInput) {
            paths.push_back(input.path);
        }
    }
    return paths;
}

// Results are put in place whole, so the beginning tells them from files that are none.
bool IsDone(const InputFile& input, const fs::path& result) {
    std::error_code fault;
    const auto made = fs::last_write_time(result, fault);
    if (fault || input.standardInput) {
        return false;
    }
    const auto changed = fs::last_write_time(input.path, fault);
    if (fault || made < changed) {
        return false;
    }
    const system::FileStart start = system::ReadFileStart(result, song::kHeaderBytes);
    return !start.error && song::BeginsLikeSong(start.bytes);
}

} // namespace tracksmith::cli
