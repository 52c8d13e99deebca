#pragma once

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Puts the resets for which InsertGMSysex and its like had no place in the chosen track: a step
/// behind the operations, before KeepDrumParts. Each goes into the first track that is not ignored
/// and has a place at its tick by the same rule, else directly behind the head event of the first
/// such track. Raises EMidiError when memory ends; the song is sound then too.
void PlaceResets(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
