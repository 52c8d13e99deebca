#pragma once

#include <cstddef>
#include <cstdint>

/// Where the messages of a GS set-up stand, in ticks behind the reset. An instrument needs about
/// 50 ms for a reset, says Roland.
namespace tracksmith::instruments {

inline constexpr std::int32_t kTickAfterGm = 62;
inline constexpr std::int32_t kRhythmDelay = 50;
inline constexpr std::int32_t kTicksApart = 2;
inline constexpr std::size_t kParts = 16;

/// Place of a part's rhythm message (parts by channel, 0-15) behind a reset at `resetTick`.
constexpr std::int32_t RhythmTick(std::int32_t resetTick, std::size_t part) {
    return resetTick + kRhythmDelay + kTicksApart * static_cast<std::int32_t>(part);
}

/// First place behind the rhythm messages.
inline constexpr std::int32_t kEffectDelay =
    kRhythmDelay + kTicksApart * static_cast<std::int32_t>(kParts);

} // namespace tracksmith::instruments
