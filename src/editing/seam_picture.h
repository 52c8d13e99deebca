#pragma once

#include <cstdint>
#include <vector>

#include "editing/range_position.h"
#include "song/song.h"

namespace tracksmith::editing {

/// A note around a seam, in ticks of the changed song.
struct SeamNote {
    std::uint8_t channel = 0;
    std::uint8_t pitch = 0;
    std::int32_t start = 0;
    std::int32_t end = 0;
    /// The tool ends it at the seam.
    bool ended = false;
    /// The tool lets it begin again at the seam.
    bool begunAgain = false;
};

/// The two measures around a seam.
struct SeamPicture {
    std::int32_t seam = 0;
    std::int32_t from = 0;
    std::int32_t to = 0;
    /// By channel, then by start.
    std::vector<SeamNote> notes;
};

/// Where the tool joins what did not follow on each other: for copies at the beginning of the
/// block or, with `atEnd`, behind it.
std::int32_t SeamTick(RangeTool tool, const TickRange& range, bool atEnd);

/// The measures before and behind a seam, in ticks of the changed song.
struct SeamSpan {
    std::int32_t from = 0;
    std::int32_t to = 0;
};
SeamSpan SpanAround(const song::TimeMap& after, std::int32_t seam);

/// The notes around a seam. `before` is the song as it is, `after` what the tool makes of it; the
/// notes of both are paired. Linear. Throws std::bad_alloc.
SeamPicture PictureSeam(const song::Song& before, const song::Song& after, RangeTool tool,
                        const TickRange& range, bool atEnd);

} // namespace tracksmith::editing
