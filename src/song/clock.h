#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tracksmith::song {

/// Milliseconds rounded to the nearest integer, halves to even, and held within 32 bits.
inline std::int32_t RoundMs(double ms) {
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::lrint(std::min(ms, kMost)));
}

/// Clock time of a tick that lies `distance` ticks behind a place at `startMs` milliseconds, in a
/// stretch of `msPerTick` milliseconds per tick.
inline std::int32_t MsBehind(std::int32_t startMs, float msPerTick, std::int64_t distance) {
    const auto ms = RoundMs(static_cast<double>(distance) * static_cast<double>(msPerTick));
    return static_cast<std::int32_t>(std::min<std::int64_t>(
        std::int64_t{startMs} + ms, std::numeric_limits<std::int32_t>::max()));
}

} // namespace tracksmith::song
