#pragma once

#include <cstdint>
#include <optional>

#include "app/diff/difference.h"
#include "song/midi_event.h"

namespace tracksmith::diff {

/// What an event sets: events of one slot at one tick replace each other.
struct Slot {
    Kind kind = Kind::Text;
    std::uint8_t channel = kWholeSong;
    /// Controller, meta type; of a note the key, with kEndOfNote for its end.
    std::uint16_t control = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): the comparison's own zero
    friend auto operator<=>(const Slot&, const Slot&) = default;
};

/// In Slot::control of a note's end.
inline constexpr std::uint16_t kEndOfNote = 256;

/// An event as it is compared.
struct Item {
    Slot slot;
    /// The data byte, the number, or for texts and messages a hash of all bytes.
    std::uint64_t value = 0;
    const song::MidiEvent* event = nullptr;

    friend bool operator==(const Item& a, const Item& b) {
        return a.slot == b.slot && a.value == b.value;
    }
};

/// How `event` is compared; nothing for what is no part of the music: events that are not saved,
/// ports, the ends of tracks.
std::optional<Item> ItemOf(const song::MidiEvent& event);

} // namespace tracksmith::diff
