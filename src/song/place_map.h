#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace tracksmith::song {

/// A stretch of the earlier state of a song that stands, moved as a whole, in the later one.
struct PlaceStretch {
    /// In the earlier state, in ticks: from `begin` up to, without, `end`.
    std::int32_t begin = 0;
    std::int32_t end = 0;
    /// Ticks from a place in the earlier state to its place in the later one.
    std::int32_t shift = 0;
};

/// Which places of two states of a song belong together. A place that only one of them has belongs
/// to the seam in the other. Any thread.
class PlaceMap {
public:
    /// Every place is the same in both.
    PlaceMap() = default;
    /// The stretches stand in order, without overlap, and have the same divisions.
    explicit PlaceMap(std::vector<PlaceStretch> stretches) : stretches_(std::move(stretches)) {}
    /// The states differ in their divisions (ticks per quarter note), both at least 1.
    PlaceMap(std::int32_t earlier, std::int32_t later) : earlier_(earlier), later_(later) {}

    /// The place in the later state that belongs to one in the earlier, and the other way round.
    std::int32_t ToLater(std::int32_t tick) const;
    std::int32_t ToEarlier(std::int32_t tick) const;

private:
    std::vector<PlaceStretch> stretches_;
    std::int32_t earlier_ = 1;
    std::int32_t later_ = 1;
};

} // namespace tracksmith::song
