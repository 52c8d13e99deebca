#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "song/event_arena.h"

namespace tracksmith::song {

struct MidiEvent;

/// Link to an event: a place in the arena, counted in units of 16 bytes. Used like a pointer; null
/// when default-made. Follows no null and no freed event.
template <typename Event>
class BasicEventLink {
public:
    constexpr BasicEventLink() = default;
    constexpr explicit BasicEventLink(std::uint32_t unit) : unit_(unit) {}
    /// Whoever may write an event may also read it.
    template <typename Other>
    requires std::same_as<const Other, Event>
    // NOLINTNEXTLINE(google-explicit-constructor): as with pointers
    constexpr BasicEventLink(BasicEventLink<Other> other) : unit_(other.Unit()) {}

    Event* operator->() const { return static_cast<Event*>(Address()); }
    Event& operator*() const { return *operator->(); }
    constexpr explicit operator bool() const { return unit_ != 0; }

    /// The event's address, null for the null link.
    Event* Get() const { return unit_ == 0 ? nullptr : operator->(); }
    /// The place in units of 16 bytes; 0 is null.
    constexpr std::uint32_t Unit() const { return unit_; }

private:
    void* Address() const { return EventArena::Base() + std::size_t{unit_} * kLinkUnit; }

    std::uint32_t unit_ = 0;
};

/// Link through which the event may be changed.
using EventLink = BasicEventLink<MidiEvent>;
/// Link through which the event is only read; what walks over a const song gets these.
using ConstEventLink = BasicEventLink<const MidiEvent>;

/// The link to an event in the arena.
template <typename Event>
BasicEventLink<Event> LinkTo(Event& event) {
    const auto* place = reinterpret_cast<const std::byte*>(&event);
    return BasicEventLink<Event>(static_cast<std::uint32_t>(
        static_cast<std::size_t>(place - EventArena::Base()) / kLinkUnit));
}

constexpr bool operator==(ConstEventLink a, ConstEventLink b) {
    return a.Unit() == b.Unit();
}

/// A link that an event or a track holds. It is an EventLink for whoever may change its owner and a
/// ConstEventLink for everybody else, so that nobody writes the events of a const song. Only copied
/// with its owner.
class EventLinkField {
public:
    constexpr EventLinkField() = default;
    /// From another field that may be changed.
    template <std::same_as<EventLinkField> Field>
    constexpr EventLinkField& operator=(Field& other) {
        link_ = other.link_;
        return *this;
    }
    constexpr EventLinkField& operator=(EventLink link) {
        link_ = link;
        return *this;
    }

    // NOLINTNEXTLINE(google-explicit-constructor): a field is used like a link
    constexpr operator EventLink() { return link_; }
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr operator ConstEventLink() const { return link_; }
    constexpr explicit operator bool() const { return static_cast<bool>(link_); }
    MidiEvent* operator->() { return link_.operator->(); }
    const MidiEvent* operator->() const { return link_.operator->(); }
    MidiEvent& operator*() { return *operator->(); }
    const MidiEvent& operator*() const { return *operator->(); }
    MidiEvent* Get() { return link_.Get(); }
    const MidiEvent* Get() const { return link_.Get(); }
    constexpr std::uint32_t Unit() const { return link_.Unit(); }

private:
    friend struct MidiEvent;
    friend struct Track;
    constexpr EventLinkField(const EventLinkField&) = default;
    constexpr EventLinkField& operator=(const EventLinkField&) = default;

    EventLink link_;
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
    std::span<std::uint8_t> Bytes() {
        return unit_ == 0 ? std::span<std::uint8_t>{} : std::span(First(), *Header());
    }
    std::span<const std::uint8_t> Bytes() const {
        return unit_ == 0 ? std::span<const std::uint8_t>{}
                          : std::span<const std::uint8_t>(First(), *Header());
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
    std::uint8_t* First() const { return reinterpret_cast<std::uint8_t*>(Header() + 1); }

    std::uint32_t unit_ = 0;
};

} // namespace tracksmith::song
