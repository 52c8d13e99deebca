#pragma once

#include "instruments/catalogue.h"
#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Prepares the song for the instrument: runs the operations of its group in their order and fills
/// `session.report`. A second run on the same song changes nothing. Events that are put carry their
/// clock time. Works on the session's index of system-exclusive events, not on all events; whether
/// the user wants the preparation at all (SysexOptions::automatic) is for the caller to ask. Raises
/// EMidiError when memory ends; the song is sound then too.
void CheckSysexs(song::Song& song, InstrumentId instrument, SysexSession& session);

} // namespace tracksmith::instruments
