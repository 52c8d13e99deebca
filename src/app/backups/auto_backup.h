#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "base/message_host.h"

#include "app/backups/backup_folder.h"
#include "app/backups/backup_settings.h"
#include "app/session/session.h"

namespace tracksmith::backups {

/// Writes backups of the session's song while it is modified: from time to time, and before another
/// song replaces it. The song is coded where this is called and written to the disk beside the
/// caller. What has been written already is not written again. A failure is said once.
///
/// Belongs to the thread of the session.
class AutoBackup : private session::SessionListener {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `session` and `host`, which is told of failures, must outlive the object. An empty `folder`
    /// means that there is no place for backups.
    AutoBackup(session::Session& session, std::filesystem::path folder, MessageHost& host);
    /// Waits until the backup that is being written is on the disk.
    ~AutoBackup() override;

    const BackupFolder& Folder() const { return folder_; }
    BackupOptions& Options() { return options_; }

    /// To be called about every second: writes a backup when the song has been modified for the
    /// chosen interval since it was unmodified or since the last backup. Not while it is being
    /// changed.
    void Look(Time now);

    /// Writes a backup now, whatever the options say, unless the song is written already. False
    /// when there is no song in order, or none could be written; that is told.
    bool WriteNow();

    /// Waits for the backup that is being written and tells what went wrong. False when it did.
    bool Finish();

private:
    void OnLeavingSong() override;

    /// The song as coded last.
    struct Written {
        std::filesystem::path original;
        std::size_t hash = 0;
        std::size_t bytes = 0;
        friend bool operator==(const Written&, const Written&) = default;
    };

    bool StartWriting();
    std::vector<std::uint8_t> Encode();
    bool Take(const BackupFolder::Outcome& outcome);
    bool Fail(const std::string& reason);

    session::Session& session_;
    BackupFolder folder_;
    MessageHost& host_;
    BackupOptions options_;
    std::optional<Time> due_;
    std::optional<Written> written_;
    std::future<BackupFolder::Outcome> writing_;
    std::string told_;
};

} // namespace tracksmith::backups
