#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "player/state_messages.h"
#include "song/channel_state.h"
#include "song/midi_event.h"

namespace tracksmith::editing {

/// What the events before a place have left on one channel beside its song::ChannelState: key
/// pressure, the modes of MIDI 1.0 and steps of data increment and decrement. One thread.
struct SideState {
    /// The numbers 124 to 127 of a mode message with its value.
    struct Mode {
        std::uint8_t number = 0;
        std::uint8_t value = 0;
        friend bool operator==(const Mode&, const Mode&) = default;
    };

    std::array<std::uint8_t, song::kControllers> keyPressure{};
    std::optional<Mode> omni;
    std::optional<Mode> mono;
    /// By the parameter as registered, MSB, LSB in 7 bits each: increments less decrements since
    /// the last entry of its LSB, which they count in.
    std::map<std::uint32_t, int> steps;

    /// Takes the next event of the channel; `channel` has taken it. Throws std::bad_alloc.
    void Take(const song::MidiEvent& event, const song::ChannelState& channel);
};

/// Both states at a seam, of one channel: what is there and what should be.
struct SidePair {
    const SideState& from;
    const SideState& to;
};

/// Puts the mode messages that lead from one state into the other. They end what sounds, so they
/// belong in front of notes. Throws std::bad_alloc.
void PutModes(const SidePair& pair, std::vector<player::ChannelMessage>& messages);

/// Puts steps and key pressure behind `composed`, the messages that lead into `channel`. Throws
/// std::bad_alloc.
void PutSides(const SidePair& pair, const song::ChannelState& channel,
              std::span<const player::ChannelMessage> composed,
              std::vector<player::ChannelMessage>& messages);

} // namespace tracksmith::editing
