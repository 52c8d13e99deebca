#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Counts the notes that begin before the instrument has taken in the messages that were put in,
/// pauses included, into the channels of the report. The last step; changes nothing in the song.
void CountEarlyNotes(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
