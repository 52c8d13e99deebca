#pragma once

#include <cstdint>

#include "editing/range_position.h"
#include "song/song.h"

namespace tracksmith::editing {

/// What stands in a range, to be shown before a tool changes it.
struct RangeFigures {
    /// Measures that the range touches, a partial one counts.
    std::int64_t measures = 0;
    std::int64_t lengthMs = 0;
    /// Notes that begin in it.
    std::int64_t notes = 0;
    /// Messages that make a part a drum part or a melody part.
    std::int64_t drumMessages = 0;
    /// All other system-exclusive messages: resets, effects, set-up of the instrument.
    std::int64_t instrumentMessages = 0;
};

/// Counts what stands in the range. The song must have a time map. Linear.
RangeFigures CountRange(const song::Song& song, const TickRange& range);

} // namespace tracksmith::editing
