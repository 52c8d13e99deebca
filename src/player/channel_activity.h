#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "player/routing.h"

namespace tracksmith::player {

/// Which notes of each source channel sound, and how loud each channel is playing. The playback
/// thread writes while it plays, any thread reads.
class ChannelActivity {
public:
    /// A note begins; `velocity` 1-127.
    void NoteOn(std::size_t channel, std::size_t key, std::uint8_t velocity);
    void NoteOff(std::size_t channel, std::size_t key);
    /// How often the key is held down.
    unsigned Sounding(std::size_t channel, std::size_t key) const {
        return notes_[channel][key].load(std::memory_order_relaxed);
    }
    /// Level meter of a channel: 0-127.
    unsigned Level(std::size_t channel) const {
        return levels_[channel].load(std::memory_order_relaxed);
    }
    /// Lets all level meters fall by one step.
    void LetLevelsFall();

    void Clear(std::size_t channel);
    void ClearAll();

private:
    std::array<std::array<std::atomic<std::uint8_t>, 128>, kChannels> notes_{};
    std::array<std::atomic<std::uint8_t>, kChannels> levels_{};
};

} // namespace tracksmith::player
