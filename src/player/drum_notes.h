#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace tracksmith::player {

/// What a drum editor makes of the notes of one channel while it is open.
struct DrumNotes {
    static constexpr std::uint8_t kNoChannel = 0xFF;

    DrumNotes() { on.fill(true); }

    /// Source channel 0-15, kNoChannel while no editor is open.
    std::uint8_t channel = kNoChannel;
    /// Notes that are heard.
    std::array<bool, 128> on{};
    /// Semitones by which a note is moved.
    std::array<std::int8_t, 128> offset{};

    /// The note that sounds for `note` (0-127) of `ofChannel`; none when it is off. A note that
    /// would leave 0-127 is not moved.
    std::optional<std::uint8_t> Sounding(std::uint8_t ofChannel, std::uint8_t note) const {
        if (ofChannel != channel) {
            return note;
        }
        if (!on[note]) {
            return std::nullopt;
        }
        const int moved = note + offset[note];
        return moved < 0 || moved > 127 ? note : static_cast<std::uint8_t>(moved);
    }
};

} // namespace tracksmith::player
