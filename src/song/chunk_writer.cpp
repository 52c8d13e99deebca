#include "song/chunk_writer.h"

#include <algorithm>
#include <array>

namespace tracksmith::song {
namespace {

// A typical event takes no more; the buffer grows where that is not enough.
constexpr std::size_t kBytesPerEvent = 5;

bool IsWritten(std::uint8_t status) {
    constexpr std::array<std::uint8_t, 7> kLongStatuses{
        kSystemExclusive, kEscape, kMeta, 0xF8, 0xFA, 0xFB, 0xFC};
    return std::find(kLongStatuses.begin(), kLongStatuses.end(), status) != kLongStatuses.end();
}

bool HasPayload(std::uint8_t status) {
    return status == kSystemExclusive || status == kEscape || status == kMeta;
}

} // namespace

ChunkWriter::ChunkWriter(ByteWriter& out, std::size_t events, const EncodeOptions& options)
    : out_(out), options_(options) {
    constexpr std::array<std::uint8_t, 8> kHeader{'M', 'T', 'r', 'k', 0, 0, 0, 0};
    out_.Expect(kHeader.size() + events * kBytesPerEvent);
    out_.Block(kHeader);
    start_ = out_.Size();
}

void ChunkWriter::End(Cursor cursor) {
    out_.EndEvent(cursor.place);
    out_.PatchWord(start_ - 4, static_cast<std::uint32_t>(out_.Size() - start_));
}

ChunkWriter::Cursor ChunkWriter::WriteOther(Cursor cursor, const MidiEvent& event) {
    out_.EndEvent(cursor.place);
    WriteAny(cursor, event);
    cursor.place = out_.BeginEvent();
    cursor.lastPlace = out_.LastStart();
    return cursor;
}

void ChunkWriter::WriteAny(Cursor& cursor, const MidiEvent& event) {
    if (event.kind == kLongMessage) {
        WriteLong(cursor, event);
    } else if (event.kind == kShortMessage && event.IsChannelMessage() && event.length >= 2) {
        WriteShort(cursor, event);
    } else if (event.kind != kShortMessage || event.length != 0) {
        throw CodingFault{};
    }
}

void ChunkWriter::WriteShort(Cursor& cursor, const MidiEvent& event) {
    std::uint8_t* place = PutDelta(cursor, event.tick);
    if (!options_.useRunningStatus || event.status != cursor.status) {
        *place++ = event.status;
    }
    cursor.status = event.status;
    *place++ = event.data1 & 0x7FU;
    if (event.length > 2) {
        *place++ = event.data2 & 0x7FU;
    }
    out_.EndEvent(place);
}

void ChunkWriter::WriteLong(Cursor& cursor, const MidiEvent& event) {
    const bool endOfTrack = event.IsMeta(kMetaEndOfTrack);
    const bool port = event.IsMeta(kMetaPort) && event.length == 1;
    if ((event.length == 0 && !endOfTrack) || (port && options_.omitPortEvents)) {
        return;
    }
    if (!IsWritten(event.status)) {
        throw CodingFault{};
    }
    std::uint8_t* place = PutDelta(cursor, event.tick);
    *place++ = event.status;
    cursor.status = 0;
    if (event.status == kMeta) {
        *place++ = event.metaType;
    }
    if (HasPayload(event.status)) {
        WriteBlock(place, event);
    } else {
        out_.EndEvent(place);
    }
}

void ChunkWriter::WriteBlock(std::uint8_t* place, const MidiEvent& event) {
    std::span<const std::uint8_t> bytes = event.Payload();
    std::vector<std::uint8_t> adjusted;
    if (event.IsMeta(kMetaLyric) && options_.adjustLyric) {
        adjusted = options_.adjustLyric(bytes);
        bytes = adjusted;
    }
    out_.EndEvent(ByteWriter::PutQuantity(place, static_cast<std::uint32_t>(bytes.size())));
    out_.Block(bytes);
}

std::uint8_t* ChunkWriter::PutDelta(Cursor& cursor, std::int32_t tick) {
    const std::int32_t delta = std::max(tick - cursor.tick, 0);
    cursor.tick = std::max(tick, cursor.tick);
    return ByteWriter::PutQuantity(out_.BeginEvent(), static_cast<std::uint32_t>(delta));
}

} // namespace tracksmith::song
