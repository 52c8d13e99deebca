#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "base/system/file_io.h"

namespace tracksmith::backups {

/// From which file each backup comes: the path of the song's own file by the backup's file name
/// (UTF-8). A song without a file has an empty path.
using BackupIndex = std::map<std::string, std::filesystem::path, std::less<>>;

/// The index in the folder of the backups. Of a damaged one every line that is whole counts; a
/// missing one is empty. Throws std::bad_alloc.
BackupIndex ReadBackupIndex(const std::filesystem::path& folder);

/// Replaces the index, whole or not at all.
system::WriteResult WriteBackupIndex(const std::filesystem::path& folder, const BackupIndex& index);

} // namespace tracksmith::backups
