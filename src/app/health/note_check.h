#pragma once

#include <cstdint>

#include "app/health/finding_list.h"
#include "song/song.h"

namespace tracksmith::health {

/// Finds notes without end or beginning, overlaps and notes shorter than `shortNote` ticks that
/// can be lengthened. The notes must be paired. Throws std::bad_alloc.
void CheckNotes(const song::Song& song, std::int32_t shortNote, FindingList& found);

} // namespace tracksmith::health
