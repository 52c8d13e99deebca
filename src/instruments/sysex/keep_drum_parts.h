#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Keeps the drum parts of a song that was made for another family of instruments: a step behind
/// the operations, before KeepChannelSettings.
///
/// A channel that the song makes a drum part (GS part mode, XG part mode, bank select MSB 126 and
/// 127 under XG, 120 under GM2; channel 10) becomes one in the instrument's own way: by a GS
/// message with its checksum behind the placeholder of its part, and once more directly behind the
/// reset where a note would come before; by bank select MSB 127 or 120 in front of its program
/// changes. Likewise for a channel 10 that plays melody. Where the instrument has no way that is
/// known, or the part changes within the first measures of a song for GS, the notes are counted in
/// the report. Raises EMidiError when memory ends; the song is sound then too.
void KeepDrumParts(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
