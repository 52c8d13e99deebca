#include "song/place_map.h"

#include <algorithm>
#include <limits>

namespace tracksmith::song {
namespace {

std::int32_t Tick(std::int64_t tick) {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(tick, 0, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::int32_t PlaceMap::ToLater(std::int32_t tick) const {
    for (const PlaceStretch& stretch : stretches_) {
        if (tick < stretch.end) {
            return Tick(std::int64_t{std::max(tick, stretch.begin)} + stretch.shift);
        }
    }
    return Tick(std::int64_t{tick} * later_ / earlier_);
}

std::int32_t PlaceMap::ToEarlier(std::int32_t tick) const {
    for (const PlaceStretch& stretch : stretches_) {
        if (tick < std::int64_t{stretch.end} + stretch.shift) {
            return Tick(std::max<std::int64_t>(std::int64_t{tick} - stretch.shift, stretch.begin));
        }
    }
    return Tick(std::int64_t{tick} * earlier_ / later_);
}

} // namespace tracksmith::song
