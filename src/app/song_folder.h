#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace tracksmith::app {

/// A song below a folder.
struct SongInFolder {
    std::filesystem::path path;
    /// Where it lies below the folder.
    std::filesystem::path relative;
};

/// A folder that could not be read, or not to its end.
struct UnreadFolder {
    std::filesystem::path folder;
    std::error_code error;
};

/// What lies below a folder.
struct SongFolder {
    std::vector<SongInFolder> songs;
    std::vector<UnreadFolder> unread;
};

/// The songs in `top` and in its subfolders (.mid, .midi, .kar, .smf in any case), sorted by path;
/// links to folders are not followed. A folder that cannot be read does not keep the others from
/// being read.
SongFolder FindSongs(const std::filesystem::path& top);

} // namespace tracksmith::app
