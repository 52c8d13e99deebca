#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "player/routing.h"

namespace tracksmith::player {

/// A voice by its numbers (0-127), as bank select and program change carry them.
struct TrialVoice {
    std::uint8_t bankMsb = 0;
    std::uint8_t bankLsb = 0;
    std::uint8_t program = 0;
};

/// Voices that are tried on channels in place of those that the song selects. Any thread.
class TrialVoices {
public:
    /// The voice tried on a source channel (0-15), if any.
    std::optional<TrialVoice> Of(std::size_t channel) const noexcept {
        const std::uint32_t packed = voices_[channel].load(std::memory_order_relaxed);
        if (packed == kNone) {
            return std::nullopt;
        }
        return TrialVoice{static_cast<std::uint8_t>(packed >> 16U & 0x7FU),
                          static_cast<std::uint8_t>(packed >> 8U & 0x7FU),
                          static_cast<std::uint8_t>(packed & 0x7FU)};
    }

    void Set(std::size_t channel, const std::optional<TrialVoice>& voice) noexcept {
        voices_[channel].store(voice ? kOn | static_cast<std::uint32_t>(voice->bankMsb) << 16U |
                                           static_cast<std::uint32_t>(voice->bankLsb) << 8U |
                                           voice->program
                                     : kNone,
                               std::memory_order_relaxed);
    }

private:
    static constexpr std::uint32_t kNone = 0;
    static constexpr std::uint32_t kOn = 1U << 24U;

    // One word each, so that the playback thread never sees half a voice.
    std::array<std::atomic<std::uint32_t>, kChannels> voices_{};
};

} // namespace tracksmith::player
