#include "app/backups/restore_backup.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/system/file_io.h"

#include "app/load_sequence.h"
#include "app/song_file.h"
#include "app/texts.h"

namespace tracksmith::backups {
namespace {

/// While it lives, songs are loaded without any change.
class AsTheyAre {
public:
    explicit AsTheyAre(session::WorkOptions& options)
        : options_(options),
          automatic_(std::exchange(options.sysexOptions.automatic, false)),
          noteLength_(std::exchange(options.noteLength, {})) {}
    AsTheyAre(const AsTheyAre&) = delete;
    AsTheyAre& operator=(const AsTheyAre&) = delete;
    ~AsTheyAre() {
        options_.sysexOptions.automatic = automatic_;
        options_.noteLength = noteLength_;
    }

private:
    session::WorkOptions& options_;
    bool automatic_;
    song::NoteLengthOptions noteLength_;
};

} // namespace

void RestoreBackup(session::Session& session, const Backup& backup, MessageHost& host) {
    auto bytes = app::ReadSongFile(backup.file);
    if (!bytes) {
        RaiseMidiError(
            host, app::texts::OpenFailed(host.CurrentLanguage(), system::PathText(backup.file)));
    }
    {
        const AsTheyAre exact(session.Options());
        app::OpenMidiData(session,
                          std::make_shared<const std::vector<std::uint8_t>>(*std::move(bytes)),
                          backup.original, host);
    }
    auto own = backup.original.empty() ? std::nullopt : app::ReadSongFile(backup.original);
    session.Change(kRestoreBackup, host, [&](session::Workspace& work) {
        if (own) { // what has changed is told against the song's own file
            work.loaded.bytes = std::make_shared<const std::vector<std::uint8_t>>(*std::move(own));
        }
        return true;
    });
}

} // namespace tracksmith::backups
