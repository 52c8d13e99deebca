#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "song/event_arena.h"

namespace tracksmith::song {

struct MidiEvent;

/// Link to an event: a place in the arena, counted in units of 16 bytes. Used like a pointer; null
/// when default-made. Follows no null and no freed event.
class EventLink {
public:
    constexpr EventLink() = default;
    constexpr explicit EventLink(std::uint32_t unit) : unit_(unit) {}

    MidiEvent* operator->() const { return static_cast<MidiEvent*>(Address()); }
    MidiEvent& operator*() const { return *operator->(); }
    constexpr explicit operator bool() const { return unit_ != 0; }
    friend constexpr bool operator==(EventLink, EventLink) = default;

    /// The event's address, null for the null link.
    MidiEvent* Get() const { return unit_ == 0 ? nullptr : static_cast<MidiEvent*>(Address()); }
    /// The place in units of 16 bytes; 0 is null.
    constexpr std::uint32_t Unit() const { return unit_; }

private:
    void* Address() const { return EventArena::Base() + std::size_t{unit_} * kLinkUnit; }

    std::uint32_t unit_ = 0;
};

/// Payload of a variable-length event: an exact-size byte block in the arena, owned by its event.
class EventData {
public:
    constexpr EventData() = default;
    constexpr explicit EventData(std::uint32_t unit) : unit_(unit) {}

    /// Number of bytes in the block.
    std::size_t Size() const { return unit_ == 0 ? 0 : *Header(); }
    bool Empty() const { return Size() == 0; }
    /// The bytes; empty span without a block.
    std::span<std::uint8_t> Bytes() const {
        return unit_ == 0 ? std::span<std::uint8_t>{}
                          : std::span(reinterpret_cast<std::uint8_t*>(Header() + 1), *Header());
    }
    /// The bytes as text, in whatever encoding the file used.
    std::string_view Text() const {
        return {reinterpret_cast<const char*>(Bytes().data()), Size()};
    }
    /// Byte `index`, 0 beyond the end: a payload shorter than its type needs counts as zeros.
    std::uint8_t operator[](std::size_t index) const {
        return index < Size() ? Bytes()[index] : std::uint8_t{0};
    }
    constexpr std::uint32_t Unit() const { return unit_; }

private:
    // The byte count stands in front of the bytes.
    std::uint32_t* Header() const {
        return reinterpret_cast<std::uint32_t*>(EventArena::Base() +
                                                std::size_t{unit_} * kLinkUnit);
    }

    std::uint32_t unit_ = 0;
};

} // namespace tracksmith::song
