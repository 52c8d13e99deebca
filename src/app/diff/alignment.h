#pragma once

#include <cstdint>
#include <vector>

#include "song/song.h"

namespace tracksmith::diff {

/// A stretch of the earlier song that stands, moved as a whole, in the later one.
struct Segment {
    /// In the earlier song: from `begin` up to, without, `end`.
    std::int32_t begin = 0;
    std::int32_t end = 0;
    /// Ticks from a place in the earlier song to its place in the later one.
    std::int32_t shift = 0;
};

/// Which stretches of two songs belong together, judged by their notes: where measures were cut or
/// put in, what follows is found again behind. In order, without overlap; at least one. What lies
/// in none of them is only in one of the songs. Throws std::bad_alloc.
std::vector<Segment> AlignSongs(const song::Song& before, const song::Song& after);

/// Where the notes of the later song from `begin` up to `end` stand in the earlier one; -1 when
/// they are nowhere in it. A stretch without notes is nowhere.
std::int32_t FindSource(const song::Song& before, const song::Song& after, std::int32_t begin,
                        std::int32_t end);

} // namespace tracksmith::diff
