#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// Effect settings of GS instruments, behind the rhythm messages of the reset that was put before
/// them. What the song sets itself is not replaced: where a reset was put in behind such messages,
/// which would undo them, they move behind it, the last one of each address. They raise EMidiError
/// when memory ends.
namespace tracksmith::instruments {

/// Delay (address 40 01 50 to 40 01 5A, device 10): keeps the song's settings; without any nothing
/// is put, as the reset has set the instrument's usual ones.
void InsertGSDelaySysex(song::Song& song, SysexSession& session);

/// Reverb time (address 40 01 34, device 10): 5D, unless the song sets it.
void InsertGSReverbSysex(song::Song& song, SysexSession& session);

/// Delay time and feedback (addresses 40 01 52 and 40 01 59, device 00): keeps the song's settings.
void InsertMP11DelaySysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
