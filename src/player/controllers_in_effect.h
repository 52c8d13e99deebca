#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "player/routing.h"
#include "song/midi_event.h"

namespace tracksmith::player {

/// For each source channel the event of each controller that is in effect at the play position: the
/// last one before it, null where there is none. The playback thread keeps it up to date while it
/// plays; any thread may read.
class ControllersInEffect {
public:
    song::EventLink Event(std::size_t channel, std::size_t controller) const {
        return song::EventLink(events_[channel][controller].load(std::memory_order_relaxed));
    }
    void Set(std::size_t channel, std::size_t controller, song::ConstEventLink event) {
        events_[channel][controller].store(event.Unit(), std::memory_order_relaxed);
    }
    void Clear() {
        for (auto& channel : events_) {
            for (auto& event : channel) {
                event.store(0, std::memory_order_relaxed);
            }
        }
    }

private:
    std::array<std::array<std::atomic<std::uint32_t>, 128>, kChannels> events_{};
};

} // namespace tracksmith::player
