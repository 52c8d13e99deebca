#pragma once

#include <compare>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tracksmith::backups {

/// What the file name of a backup says: `<song>_<stamp>.mid`, with `_<number>` behind the stamp
/// where there are several of a second.
struct BackupName {
    /// Name of the song's file without its extension, as any file system takes it (UTF-8).
    std::string song;
    /// Local date and time: yyyymmdd_hhnnss.
    std::string stamp;
    /// From 1.
    int number = 1;

    /// The file name.
    std::string FileName() const;
    /// Greater for the later one.
    std::strong_ordering AgeOrder(const BackupName& other) const;
};

/// The parts of a backup's file name (UTF-8); nothing for the name of another file.
std::optional<BackupName> ParseBackupName(std::string_view fileName);

/// The name of the song in `file`, without what a file system refuses, Windows' too; `unnamed` for
/// a song without a file.
std::string SongNameOf(const std::filesystem::path& file, std::string_view unnamed);

/// The stamp for a time. Not from several threads at once.
std::string StampOf(std::time_t time);

} // namespace tracksmith::backups
