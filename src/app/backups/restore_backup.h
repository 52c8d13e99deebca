#pragma once

#include "base/message_host.h"

#include "app/backups/backup_folder.h"
#include "app/session/session.h"

namespace tracksmith::backups {

/// Loading a backup in place of the song.
inline constexpr session::ChangeKind kRestoreBackup{
    .name = Text{De{"Wiederherstellen"}, En{"Restoring"}}};

/// Loads `backup` as the song, exactly as it was backed up, under the name of its own file; that
/// file stays as it is until the song is saved, and the song counts as modified. Where the own file
/// is not known the song has none. Asks nothing. Raises EMidiError; a backup that cannot be read
/// leaves the song in memory as it is.
void RestoreBackup(session::Session& session, const Backup& backup, MessageHost& host);

} // namespace tracksmith::backups
