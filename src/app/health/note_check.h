#pragma once

#include <cstdint>

#include "app/health/finding_list.h"
#include "song/song.h"

namespace tracksmith::health {

/// Finds notes of a track without end or beginning, overlaps and notes shorter than `shortNote`
/// ticks that can be lengthened; nothing on an ignored track. The notes must be paired. Throws
/// std::bad_alloc.
void CheckNotes(const song::Song& song, const song::Track& track, std::int32_t shortNote,
                FindingList& found);

} // namespace tracksmith::health
