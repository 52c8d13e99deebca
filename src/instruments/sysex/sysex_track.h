#pragma once

#include <cstdint>

#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Whether the operations leave the track alone.
bool IsIgnored(const song::Song& song, std::int32_t track);

/// Index of the track that receives set-up messages: the only one; else, with GM before GS, the
/// first of channel 10 or else the default track; else, with the fixed track, the caller's or else
/// the default; else track 10. An index that the song lacks counts as 0, an ignored track as the
/// first that is not. -1 when there is no track to write to.
std::int32_t ChooseSysexTrack(const song::Song& song, const SysexSession& session);

} // namespace tracksmith::instruments
