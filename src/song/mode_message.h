#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace tracksmith::song {

/// The convention by which an instrument reads bank selects and tells drums from melody.
enum class SynthMode { Gm, Gm2, Gs, Xg };

/// A part that is made a drum part or a melody part.
struct RhythmPart {
    /// Channel 0-15 of the part as it is after a reset.
    std::uint8_t channel = 0;
    bool drum = false;
    friend bool operator==(const RhythmPart&, const RhythmPart&) = default;
};

/// A system-exclusive message without F0 and F7.
std::span<const std::uint8_t> WithoutFrame(std::span<const std::uint8_t> message);

/// The mode that a reset switches to; empty when `sysex` (without F0 and F7) is no reset. Any
/// device number counts. GM System On (RP-003), GM2 System On (RP-024), GS Reset and System Mode
/// Set (Roland SC-88 owner's manual), XG System On and All Parameter Reset (Yamaha XG
/// data lists).
std::optional<SynthMode> ModeOfReset(std::span<const std::uint8_t> sysex);

/// The bank select MSB of a drum or melody channel after a reset to `mode`.
std::uint8_t BankMsbAfterReset(SynthMode mode, bool drum);

/// The part that `sysex` (without F0 and F7) turns into drums or melody; empty for other messages.
/// GS "use for rhythm part" (address 40 1x 15, checksum must fit) and XG part mode (08 pp 07), at
/// any device number.
std::optional<RhythmPart> RhythmPartOf(std::span<const std::uint8_t> sysex);

} // namespace tracksmith::song
