#pragma once

#include <cstdint>

namespace tracksmith::player {

/// Controllers of MIDI 1.0 that end what sounds or concern the keyboard.
inline constexpr std::uint8_t kSustain = 64;
inline constexpr std::uint8_t kAllSoundOff = 120;
inline constexpr std::uint8_t kLocalControl = 122;
inline constexpr std::uint8_t kAllNotesOff = 123;

} // namespace tracksmith::player
