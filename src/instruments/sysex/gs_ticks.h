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

/// First place behind the rhythm messages.
inline constexpr std::int32_t kEffectDelay =
    kRhythmDelay + kTicksApart * static_cast<std::int32_t>(kParts);

} // namespace tracksmith::instruments
