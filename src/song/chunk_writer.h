#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "song/byte_writer.h"
#include "song/midi_event.h"
#include "song/midi_file_writer.h"

namespace tracksmith::song {

/// Thrown for an event that cannot be written.
struct CodingFault {};

/// Writes the events of one track chunk (RP-001, MTrk); knows the rules of delta times and running
/// status. Throws CodingFault.
class ChunkWriter {
public:
    /// Where the next event goes and what it depends on. A loop over many events holds it in a
    /// local, since through memory it would pass from event to event at half the speed.
    struct Cursor {
        std::uint8_t* place;
        const std::uint8_t* lastPlace;
        std::int32_t tick;
        std::uint8_t status;
        bool useRunningStatus;
    };

    /// Begins a chunk of about `events` events behind what `out` holds.
    ChunkWriter(ByteWriter& out, std::size_t events, const EncodeOptions& options);

    Cursor Begin() {
        return {out_.BeginEvent(), out_.LastStart(), 0, 0, options_.useRunningStatus};
    }

    /// Writes one event. An event before the one written last gets delta 0.
    void Write(Cursor& cursor, const MidiEvent& event) {
        if (!WritePlain(cursor, event)) [[unlikely]] {
            // By value, so that the cursor may live in registers.
            cursor = WriteOther(cursor, event);
        }
    }

    /// Ends the chunk.
    void End(Cursor cursor);

private:
    // A channel message of two or three bytes after a delta time of up to two. All its bytes go out
    // at once and without a branch; what is too many is written over by the next event.
    static bool WritePlain(Cursor& cursor, const MidiEvent& event) {
        static_assert(std::endian::native == std::endian::little);
        const auto delta = static_cast<std::uint32_t>(event.tick - cursor.tick);
        const auto length = static_cast<std::uint32_t>(event.length);
        if (event.kind != kShortMessage || !event.IsChannelMessage() || length - 2 > 1 ||
            delta > 0x3FFF || cursor.place > cursor.lastPlace) [[unlikely]] {
            return false;
        }
        const std::uint32_t leaveOut = static_cast<std::uint32_t>(cursor.useRunningStatus) &
                                       static_cast<std::uint32_t>(event.status == cursor.status);
        const std::uint32_t data = (event.data1 | (std::uint32_t{event.data2} << 8)) & 0x7F7FU;
        const std::uint64_t message = (event.status | (data << 8)) >> (8 * leaveOut);
        // Not written as a condition, which the compiler would turn into a branch.
        const std::uint32_t two = (0x7FU - delta) >> 31;
        const std::uint32_t first = (delta >> (7 * two)) | (two << 7);
        const std::uint32_t quantity = first | ((delta & 0x7FU) << 8);
        // Behind a quantity of one byte its second byte is written over by the message.
        const std::uint32_t bits = 8 + 8 * two;
        const std::uint64_t bytes = (quantity & ((1U << bits) - 1)) | (message << bits);
        std::memcpy(cursor.place, &bytes, sizeof(bytes));
        cursor.place += 1 + two + length - leaveOut;
        cursor.tick = event.tick;
        cursor.status = event.status;
        return true;
    }

    Cursor WriteOther(Cursor cursor, const MidiEvent& event);
    void WriteAny(Cursor& cursor, const MidiEvent& event);
    void WriteShort(Cursor& cursor, const MidiEvent& event);
    void WriteLong(Cursor& cursor, const MidiEvent& event);
    void WriteBlock(std::uint8_t* place, const MidiEvent& event);
    std::uint8_t* PutDelta(Cursor& cursor, std::int32_t tick);

    ByteWriter& out_;
    const EncodeOptions& options_;
    std::size_t start_;
};

} // namespace tracksmith::song
