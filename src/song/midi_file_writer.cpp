#include "song/midi_file_writer.h"

#include <limits>
#include <utility>

#include "base/parallel.h"

#include "song/chunk_writer.h"
#include "song/prefetch.h"
#include "song/texts.h"
#include "song/track_walk.h"

namespace tracksmith::song {
namespace {

bool IsPortEvent(const MidiEvent& event) {
    return event.kind == kLongMessage && event.IsMeta(kMetaPort) && event.length == 1;
}

void PutHeader(ByteWriter& file, std::uint8_t format, std::size_t tracks, std::uint16_t division) {
    std::vector<std::uint8_t> header{'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, format};
    for (const std::size_t word : {tracks, std::size_t{division}}) {
        header.push_back(static_cast<std::uint8_t>(word >> 8));
        header.push_back(static_cast<std::uint8_t>(word & 0xFF));
    }
    file.Clear();
    file.Block(header);
}

std::size_t CountEvents(const Song& song) {
    std::size_t events = 0;
    for (const Track& track : song.tracks) {
        events += static_cast<std::size_t>(track.eventCount);
    }
    return events;
}

void PutMerged(ByteWriter& file, const Song& song, const EncodeOptions& options) {
    ChunkWriter writer(file, CountEvents(song), options);
    ChunkWriter::Cursor cursor = writer.Begin();
    bool portWritten = false;
    const MidiEvent* end = nullptr;
    TrackWalk<TickOrder> walk(song);
    while (const MidiEvent* event = walk.Take()) {
        if (event->IsMeta(kMetaEndOfTrack)) {
            end = event;
        } else if (!IsPortEvent(*event) || !std::exchange(portWritten, true)) {
            writer.Write(cursor, *event);
        }
    }
    if (end == nullptr) {
        throw CodingFault{};
    }
    writer.Write(cursor, *end);
    writer.End(cursor);
}

void PutTrack(ByteWriter& chunk, const Track& track, const EncodeOptions& options) {
    chunk.Clear();
    ChunkWriter writer(chunk, static_cast<std::size_t>(track.eventCount), options);
    ChunkWriter::Cursor cursor = writer.Begin();
    for (const MidiEvent* event = track.first.Get(); event != nullptr; event = event->next.Get()) {
        PrefetchForReading(event);
        writer.Write(cursor, *event);
    }
    writer.End(cursor);
}

} // namespace

std::span<const std::uint8_t> SongEncoder::Format0(const Song& song, const EncodeOptions& options,
                                                   MessageHost& host) {
    PutHeader(file_, 0, 1, song.division);
    try {
        PutMerged(file_, song, options);
    } catch (const CodingFault&) {
        RaiseMidiError(host, texts::kCoding);
    }
    return file_.Written();
}

std::span<const std::uint8_t> SongEncoder::Format1(const Song& song, const EncodeOptions& options,
                                                   MessageHost& host) {
    const std::size_t tracks = song.tracks.size();
    if (tracks == 0 || tracks > std::numeric_limits<std::uint16_t>::max()) {
        RaiseMidiError(host, texts::kCoding);
    }
    chunks_.resize(std::max(chunks_.size(), tracks));
    try {
        ParallelFor(tracks, ThreadsFor(CountEvents(song) * sizeof(MidiEvent)),
                    [&](std::size_t i) { PutTrack(chunks_[i], song.tracks[i], options); });
    } catch (const CodingFault&) {
        RaiseMidiError(host, texts::kCoding);
    }
    JoinChunks(song);
    return file_.Written();
}

void SongEncoder::JoinChunks(const Song& song) {
    PutHeader(file_, 1, song.tracks.size(), song.division);
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < song.tracks.size(); ++i) {
        bytes += chunks_[i].Size();
    }
    file_.Expect(bytes);
    for (std::size_t i = 0; i < song.tracks.size(); ++i) {
        file_.Block(chunks_[i].Written());
    }
}

std::vector<std::uint8_t> EncodeFormat0(const Song& song, const EncodeOptions& options,
                                        MessageHost& host) {
    SongEncoder encoder;
    const auto file = encoder.Format0(song, options, host);
    return {file.begin(), file.end()};
}

std::vector<std::uint8_t> EncodeFormat1(const Song& song, const EncodeOptions& options,
                                        MessageHost& host) {
    SongEncoder encoder;
    const auto file = encoder.Format1(song, options, host);
    return {file.begin(), file.end()};
}

} // namespace tracksmith::song
