#pragma once

#include <cstdint>
#include <string_view>
#include <tuple>

namespace tracksmith::instruments {

/// Family of the drum kits; every other family holds voices.
inline constexpr std::string_view kDrumsFamily = "Drums";

/// The three numbers that select a voice: bank select (controllers 0 and 32) and program change,
/// each 0 to 127, the program counted from 0 as it is sent.
struct VoiceNumbers {
    std::uint8_t msb = 0;
    std::uint8_t lsb = 0;
    std::uint8_t program = 0;

    /// By MSB, then LSB, then program.
    friend bool operator<(VoiceNumbers a, VoiceNumbers b) {
        return std::tie(a.msb, a.lsb, a.program) < std::tie(b.msb, b.lsb, b.program);
    }
    friend bool operator==(VoiceNumbers, VoiceNumbers) = default;
};

/// One record of a voice table. The texts belong to the table and live as long as it does.
struct Voice {
    /// Place in its table, counted from 0.
    std::uint32_t row = 0;
    std::uint8_t msb = 0;
    std::uint8_t lsb = 0;
    std::string_view name;
    std::uint8_t program = 0;
    /// Group of voices that a picker offers as a whole ("Panel", "XG", "Drums").
    std::string_view family;
    /// Group within the family ("Piano").
    std::string_view category;

    constexpr VoiceNumbers Numbers() const { return {msb, lsb, program}; }
    constexpr bool IsKit() const { return family == kDrumsFamily; }
};

} // namespace tracksmith::instruments
