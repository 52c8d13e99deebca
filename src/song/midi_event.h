#pragma once

#include <cstdint>
#include <span>
#include <type_traits>

#include "song/event_link.h"
#include "song/midi_numbers.h"

namespace tracksmith::song {

/// How an event holds its bytes.
inline constexpr std::uint8_t kShortMessage = 1;
inline constexpr std::uint8_t kLongMessage = 2;

/// One event of a track. Lives in an EventPool; owned by its track's chain.
struct MidiEvent {
    /// Full status byte: 0x80-0xEF with the channel, 0xF0/0xF7 system exclusive, 0xFF meta.
    std::uint8_t status = 0;
    /// Bytes of the message: 3 or 2 for channel messages, the payload's count otherwise. 0 marks an
    /// event that is kept in the chain but neither sent nor saved.
    std::int32_t length = 0;
    /// kShortMessage (bytes in data1, data2) or kLongMessage (bytes in data).
    std::uint8_t kind = 0;
    /// Payload of a kLongMessage.
    EventData data;
    /// Meta event type, 0xFF when this is no meta event.
    std::uint8_t metaType = 0;
    /// Next event of the track, null at the last.
    EventLinkField next;
    /// Free for the note pairing of the editing tools.
    EventLinkField pairLink;
    /// For a note-off: its note-on, once the notes are paired.
    EventLinkField noteOnLink;
    /// Previous event of the track, null at the first.
    EventLinkField prev;
    /// Position in ticks from the song's start.
    std::int32_t tick = 0;
    /// Data bytes of a kShortMessage. The playback thread reads them while the mixer writes.
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
    /// The data bytes as the file had them.
    std::uint8_t origData1 = 0;
    std::uint8_t origData2 = 0;
    /// Play time in milliseconds from the song's start.
    std::int32_t timeMs = 0;

    /// Status without the channel for channel messages.
    std::uint8_t Command() const { return static_cast<std::uint8_t>(status & 0xF0); }
    /// Channel 0-15; only meaningful for channel messages.
    std::uint8_t Channel() const { return static_cast<std::uint8_t>(status & 0x0F); }
    bool IsChannelMessage() const { return status >= 0x80 && status < 0xF0; }
    bool IsNoteOn() const { return Command() == kNoteOn; }
    bool IsMeta(std::uint8_t type) const { return status == kMeta && metaType == type; }
    /// Bytes of `data` that count: `length` and the block's size may disagree, the smaller holds.
    std::span<const std::uint8_t> Payload() const {
        const auto bytes = data.Bytes();
        const auto wanted = length > 0 ? static_cast<std::size_t>(length) : 0;
        return bytes.first(wanted < bytes.size() ? wanted : bytes.size());
    }
};

static_assert(sizeof(MidiEvent) == 48);
static_assert(std::is_trivially_copyable_v<MidiEvent>);

} // namespace tracksmith::song
