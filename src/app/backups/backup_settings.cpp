#include "app/backups/backup_settings.h"

#include <algorithm>
#include <cstdint>
#include <system_error>

namespace tracksmith::backups {
namespace {

constexpr const char* kOn = "AutoBackup";
constexpr const char* kMinutes = "AutoBackupMinutes";
constexpr const char* kSeen = "AutoBackupSeen";

} // namespace

BackupOptions ReadBackupOptions(settings::SettingsStore& store) {
    BackupOptions options;
    options.on = store.ReadBoolFromUserRegistry(kOn, options.on);
    const std::int32_t minutes = store.ReadIntFromUserRegistry(
        kMinutes, static_cast<std::int32_t>(options.interval.count()));
    options.interval = std::chrono::minutes(
        std::clamp(minutes, 1, static_cast<std::int32_t>(kLongestInterval.count())));
    return options;
}

bool WriteBackupOptions(settings::SettingsStore& store, const BackupOptions& options) {
    const bool on = store.WriteBoolToUserRegistry(kOn, options.on);
    return store.WriteIntToUserRegistry(kMinutes,
                                        static_cast<std::int32_t>(options.interval.count())) &&
           on;
}

bool MarkBackupsSeen(settings::SettingsStore& store, const BackupFolder& folder) {
    const BackupList list = folder.List();
    return list.backups.empty() ||
           store.WriteStrToUserRegistry(kSeen, list.backups.front().name.FileName());
}

std::optional<Backup> UnseenBackup(settings::SettingsStore& store, const BackupFolder& folder) {
    const BackupList list = folder.List();
    if (list.backups.empty()) {
        return std::nullopt;
    }
    const Backup& newest = list.backups.front();
    const auto seen = ParseBackupName(store.ReadStrFromUserRegistry(kSeen, ""));
    std::error_code missing;
    const auto saved = std::filesystem::last_write_time(newest.original, missing);
    const bool older = !missing && saved >= newest.written;
    const bool known = seen && std::is_lteq(newest.name.AgeOrder(*seen));
    return older || known ? std::nullopt : std::optional(newest);
}

} // namespace tracksmith::backups
