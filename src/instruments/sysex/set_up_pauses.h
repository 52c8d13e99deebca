#pragma once

#include <cstdint>

/// How long an instrument needs after a message before it takes the next one, in milliseconds.
/// Roland's and Yamaha's MIDI implementations ask for about 50 ms after a reset; Roland's ask for
/// 20 to 40 ms between long messages.
namespace tracksmith::instruments {

inline constexpr std::int32_t kResetPauseMs = 50;
/// After any other set-up message.
inline constexpr std::int32_t kSetUpPauseMs = 20;

} // namespace tracksmith::instruments
