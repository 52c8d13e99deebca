#pragma once

#include <cstdint>

#include "song/song.h"

namespace tracksmith::song {

/// Length in ticks of the measure that a song begins with. Needs the lists of time signatures.
std::int32_t FirstMeasureTicks(const TimeMap& map);

/// Puts an empty measure in front of the song, as long as its first one. At tick 0 stay tempo,
/// time signature, key, names, set-up messages and the settings of each channel from before its
/// first note; everything else moves by the measure's length. Rebuilds lists, zones and clock
/// times. Returns false, and changes nothing, where the song would become too long. Throws
/// std::bad_alloc.
bool InsertLeadInMeasure(Song& song);

} // namespace tracksmith::song
