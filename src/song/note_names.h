#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tracksmith::song {

/// Name of a note (0-127) as arranger keyboards count: middle C, 60, is "C3".
inline std::string NoteName(std::uint8_t note) {
    constexpr std::array<std::string_view, 12> kNames{"C",  "C#", "D",  "D#", "E",  "F",
                                                      "F#", "G",  "G#", "A",  "A#", "B"};
    constexpr int kOctaveOfZero = -2;
    return std::string(kNames.at(note % 12U)) + std::to_string(note / 12 + kOctaveOfZero);
}

} // namespace tracksmith::song
