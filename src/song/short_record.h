#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "song/midi_event.h"

namespace tracksmith::song {

/// The bytes of a short message; `data2` is 0 where there is none.
struct ShortMessage {
    std::uint8_t status;
    std::uint8_t data1;
    std::uint8_t data2;
};

/// The links of a freshly read event as units.
struct ShortRecordLinks {
    std::uint32_t prev;
    std::uint32_t noteOn;
};

/// Fills the record of a freshly read channel message. The same as assigning a MidiEvent, but in
/// six wide stores: loading is mostly the writing of records.
inline void WriteShortRecord(EventLink event, ShortMessage message, ShortRecordLinks links,
                             std::int32_t tick, std::int32_t timeMs) {
    static_assert(std::endian::native == std::endian::little);
    static_assert(offsetof(MidiEvent, length) == 4 && offsetof(MidiEvent, kind) == 8 &&
                  offsetof(MidiEvent, metaType) == 16 && offsetof(MidiEvent, noteOnLink) == 28 &&
                  offsetof(MidiEvent, prev) == 32 && offsetof(MidiEvent, tick) == 36 &&
                  offsetof(MidiEvent, data1) == 40 && offsetof(MidiEvent, timeMs) == 44);
    const auto put = [to = reinterpret_cast<std::byte*>(event.operator->())](
                         std::size_t offset, std::uint32_t low, std::uint32_t high) {
        const std::uint64_t word = low | (std::uint64_t{high} << 32);
        std::memcpy(to + offset, &word, sizeof(word));
    };
    const std::uint32_t length = 3U - static_cast<std::uint32_t>((message.status & 0xE0) == 0xC0);
    const std::uint32_t data = message.data1 | (std::uint32_t{message.data2} << 8);
    put(0, message.status, length);
    put(8, kShortMessage, 0);
    put(16, kNoMeta, 0);
    put(24, 0, links.noteOn);
    put(32, links.prev, static_cast<std::uint32_t>(tick));
    put(40, data | (data << 16), static_cast<std::uint32_t>(timeMs));
}

} // namespace tracksmith::song
