#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>

#include "midi/my_midi_event.h"
#include "player/event_sender.h"
#include "player/routing.h"

namespace tracksmith::player {

/// Passes received channel messages on to where their channel is routed, and remembers the keys
/// that are down. Owner's thread.
class MidiThru {
public:
    explicit MidiThru(const EventSender& sender) : sender_(sender) {}

    void Forward(const midi::TMyMidiEvent& event);
    /// Releases the keys that are still down.
    void ReleaseKeys();

private:
    const EventSender& sender_;
    std::array<std::bitset<128>, kChannels> down_;
};

} // namespace tracksmith::player
