#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/system/file_io.h"

#include "app/backups/backup_name.h"

namespace tracksmith::backups {

/// So many backups are kept.
inline constexpr std::size_t kMostBackups = 50;
/// The newest one of each of so many songs is never removed.
inline constexpr std::size_t kSafeSongs = 20;

/// A backup on the disk.
struct Backup {
    std::filesystem::path file;
    BackupName name;
    std::uintmax_t bytes = 0;
    std::filesystem::file_time_type written;
    /// The song's own file; empty where it had none, or where nobody knows it any more.
    std::filesystem::path original;
};

/// What lies in the folder of the backups.
struct BackupList {
    /// Newest first.
    std::vector<Backup> backups;
    /// Why the folder could not be read, or not to its end; none for a folder that is not there.
    std::error_code error;
};

/// The backups, of a list with the newest first, that go so that kMostBackups are left.
std::vector<Backup> BackupsToRemove(const std::vector<Backup>& newestFirst);

/// A song that is to be written as a backup.
struct BackupSource {
    /// Its name, see SongNameOf.
    std::string song;
    std::filesystem::path original;
    /// See StampOf.
    std::string stamp;
};

/// The folder of the backups with the index of where they come from. Other files in it, like
/// reports about notes, are neither listed nor touched. Any thread, but one writer at a time; what
/// is on the disk is whole at any moment, also when the program is killed.
class BackupFolder {
public:
    /// The folder need not exist yet.
    explicit BackupFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    const std::filesystem::path& Path() const { return folder_; }

    BackupList List() const;

    /// Outcome of Write.
    struct Outcome {
        system::WriteResult result;
        /// The backup that was written.
        std::filesystem::path file;
    };
    /// Writes a backup, enters it into the index and removes those that are too many. Throws
    /// std::bad_alloc.
    Outcome Write(const BackupSource& source, std::span<const std::uint8_t> bytes) const;

private:
    std::filesystem::path folder_;
};

/// `AutoBackups` in the folder of the user's data; empty when the user has none.
std::filesystem::path UsualBackupFolder();

} // namespace tracksmith::backups
