#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "app/health/check_health.h"
#include "app/health/finding.h"
#include "song/song.h"

namespace tracksmith::health {

/// A note of a figure; a note-off without a note begins where it ends.
struct FigureNote {
    static constexpr std::int32_t kNoEnd = std::numeric_limits<std::int32_t>::max();

    std::uint8_t key = 0;
    /// In ticks; the end may be kNoEnd.
    std::int32_t begin = 0;
    std::int32_t end = 0;
    /// The repair changes it.
    bool changed = false;
    friend bool operator==(const FigureNote&, const FigureNote&) = default;
};

/// The notes of a channel around a place, as they are and as a repair would make them.
struct NoteFigure {
    /// What is shown, in ticks.
    std::int32_t from = 0;
    std::int32_t to = 0;
    std::vector<FigureNote> now;
    std::vector<FigureNote> after;
};

/// What the repair of `finding` does around its place `tick`. Mends a copy of the notes there; the
/// song is not changed. Its notes must be paired and it must have a time map. Empty where the
/// repair leaves notes alone. One walk over the song; throws std::bad_alloc.
NoteFigure FigureOf(const song::Song& song, const Finding& finding, std::int32_t tick,
                    const HealthOptions& options);

} // namespace tracksmith::health
