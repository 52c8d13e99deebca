#pragma once

#include <cstdint>

#include "song/event_link.h"

namespace tracksmith::song {

/// Status bytes and meta types of MIDI 1.0 and of Standard MIDI Files 1.0 (RP-001).
enum : std::uint8_t {
    kNoteOff = 0x80,
    kNoteOn = 0x90,
    kPolyPressure = 0xA0,
    kControlChange = 0xB0,
    kProgramChange = 0xC0,
    kChannelPressure = 0xD0,
    kPitchBend = 0xE0,
    kSystemExclusive = 0xF0,
    kEscape = 0xF7,
    kMeta = 0xFF,

    kMetaSequenceNumber = 0x00,
    kMetaText = 0x01,
    kMetaTrackName = 0x03,
    kMetaLyric = 0x05,
    kMetaMarker = 0x06,
    kMetaChannelPrefix = 0x20,
    kMetaPort = 0x21,
    kMetaEndOfTrack = 0x2F,
    kMetaTempo = 0x51,
    kMetaSmpteOffset = 0x54,
    kMetaTimeSignature = 0x58,
    kMetaKeySignature = 0x59,
    kMetaSequencerSpecific = 0x7F,
    kNoMeta = 0xFF
};

/// How an event holds its bytes.
enum : std::uint8_t { kShortMessage = 1, kLongMessage = 2 };

/// One event of a track. Lives in an EventPool; owned by its track's chain.
struct MidiEvent {
    /// Full status byte: 0x80-0xEF with the channel, 0xF0/0xF7 system exclusive, 0xFF meta.
    std::uint8_t status;
    /// Bytes of the message: 3 or 2 for channel messages, the payload's count otherwise. 0 marks an
    /// event that is kept in the chain but neither sent nor saved.
    std::int32_t length;
    /// kShortMessage (bytes in data1, data2) or kLongMessage (bytes in data).
    std::uint8_t kind;
    /// Payload of a kLongMessage.
    EventData data;
    /// Meta event type, 0xFF when this is no meta event.
    std::uint8_t metaType;
    /// Next event of the track, null at the last.
    EventLink next;
    /// Free for the note pairing of the editing tools.
    EventLink pairLink;
    /// For a note-off: its note-on, once the notes are paired.
    EventLink noteOnLink;
    /// Previous event of the track, null at the first.
    EventLink prev;
    /// Position in ticks from the song's start.
    std::int32_t tick;
    /// Data bytes of a kShortMessage. The playback thread reads them while the mixer writes.
    std::uint8_t data1;
    std::uint8_t data2;
    /// The data bytes as the file had them.
    std::uint8_t origData1;
    std::uint8_t origData2;
    /// Play time in milliseconds from the song's start.
    std::int32_t timeMs;

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

} // namespace tracksmith::song
