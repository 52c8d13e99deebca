#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "app/backups/backup_folder.h"
#include "app/settings/settings_store.h"

namespace tracksmith::backups {

/// When backups are written by themselves.
struct BackupOptions {
    bool on = true;
    std::chrono::minutes interval{5};
};

/// The longest interval that can be chosen.
inline constexpr std::chrono::minutes kLongestInterval{120};

/// What the user has chosen: every five minutes at first. A stored interval out of range counts as
/// the nearest that is in it.
BackupOptions ReadBackupOptions(settings::SettingsStore& store);
/// Returns false when it could not be stored.
bool WriteBackupOptions(settings::SettingsStore& store, const BackupOptions& options);

/// The program ends as the user wants it: what lies in `folder` need not be offered again. Returns
/// false when that could not be stored.
bool MarkBackupsSeen(settings::SettingsStore& store, const BackupFolder& folder);

/// The newest backup when the program did not end properly: it was written after the last proper
/// end and is newer than the song's own file. Nothing otherwise.
std::optional<Backup> UnseenBackup(settings::SettingsStore& store, const BackupFolder& folder);

} // namespace tracksmith::backups
