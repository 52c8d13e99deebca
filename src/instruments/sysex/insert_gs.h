#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// Reset and rhythm parts of GS instruments.
///
/// The reset goes to tick T of the SysEx track: 2, or 62 with GM before GS; T stays in the session
/// as its insertion tick. A reset in the first 8 quarter notes is kept instead. The rhythm messages
/// of the first 8 quarter notes move to T + 50 + 2 * channel of the same track, the last one of
/// each channel; a channel without one gets a placeholder of length 0 there. A rhythm message that
/// follows a reset of the song's own is never moved in front of it and stays. What stands at its
/// place already stays, so that a second run changes nothing. A message that moves counts as
/// removed and as inserted. They raise EMidiError when memory ends.
namespace tracksmith::instruments {

/// For the Sound Canvas and its kin: device 10.
void InsertGSSysex(song::Song& song, SysexSession& session);

/// For MB Music: device 00.
void InsertMBMusicSysex(song::Song& song, SysexSession& session);

/// For the Miditemp MP11: device 00.
void InsertMP11Sysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
