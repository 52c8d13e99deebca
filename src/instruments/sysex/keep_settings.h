#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Keeps what the song sets: the step behind the operations.
///
/// What is in force on a channel (bank, program, controllers, parameters, bend, pressure) and
/// stands before a reset that was put in goes behind it in the order of playing, each event in its
/// own track: moved, or repeated where a note of the channel begins before. As far behind as the
/// pauses of set_up_pauses.h ask, behind the last rhythm message of GS instruments, but never
/// behind the channel's next note; the channel's own settings within that time go along. Set-up
/// messages of the song go behind the reset too. A message that makes one channel a drum part
/// undoes program and bank of that channel. What a reset of the song's own had undone stays undone,
/// also where it was taken out: then the values after a reset are put in, unless the song sets
/// others before the channel's next note. Does nothing where no reset was put in or taken out.
/// Counts the early notes on its way. Fills the channels of the report. Raises EMidiError when
/// memory ends; the song is sound then too.
void KeepChannelSettings(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
