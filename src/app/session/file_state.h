#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace tracksmith::session {

/// In which format a song is saved: AsSong is the one that was last chosen for the file, at first
/// that of the song.
enum class SaveFormat { AsSong, Format0, Format1 };

/// By what a change of a file on the disk is noticed.
struct FileStamp {
    std::filesystem::file_time_type written;
    std::uintmax_t bytes = 0;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The stamp of `file`; nothing when there is no such file.
std::optional<FileStamp> StampOf(const std::filesystem::path& file);

/// Where the song came from and where it is saved to.
struct FileState {
    /// The file that Save writes to; empty for a song without a file of the user's.
    std::filesystem::path name;
    /// The file that the song came from or was saved to last, also when saving must not write to
    /// it; empty for a new song.
    std::filesystem::path source;
    /// The song is the demo song, which is part of the program.
    bool isDemo = false;
    /// The format in which Save writes.
    SaveFormat format = SaveFormat::AsSong;
    /// `source` as it was when it was read or written.
    std::optional<FileStamp> stamp;

    /// True when others have changed or removed `source` since.
    bool ChangedOnDisk() const { return !source.empty() && stamp && StampOf(source) != stamp; }
};

/// The state of a song that was read from `file`. The demo song has no name, so that saving asks
/// for a place of the user's own.
FileState LoadedFile(const std::filesystem::path& file, bool isDemo);

} // namespace tracksmith::session
