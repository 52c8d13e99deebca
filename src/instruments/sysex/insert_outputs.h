#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

/// The audio outputs that the parts of an instrument play to: a message for each part whose output
/// in the options is not the usual one (0). Other settings of these parts in the first 8 quarter
/// notes are removed; the usual output leaves the song as it is.
namespace tracksmith::instruments {

/// Integra-7: address 18 00 2p 29 of the studio set (Roland's parameter address map).
void InsertIntegra7OutputsSysex(song::Song& song, SysexSession& session);

/// Motif-Rack XS: address 37 pp 1F of the multi (parameter change table of Yamaha's data list).
void InsertMotifXSOutputsSysex(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
