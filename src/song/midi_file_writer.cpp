#include "song/midi_file_writer.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

#include "song/byte_writer.h"
#include "song/texts.h"

namespace tracksmith::song {
namespace {

// A typical event takes no more; the buffer grows where that is not enough.
constexpr std::size_t kBytesPerEvent = 5;

std::size_t ExpectedBytes(const Song& song) {
    std::size_t events = 0;
    for (const Track& track : song.tracks) {
        events += static_cast<std::size_t>(track.eventCount);
    }
    return events * kBytesPerEvent + song.tracks.size() * 16 + 64;
}

// Writes events one after the other; knows the rules of delta times and running status.
class EventWriter {
public:
    EventWriter(const Song& song, const EncodeOptions& options, MessageHost& host)
        : options_(options), host_(host), out_(ExpectedBytes(song)) {}

    void Header(std::uint8_t format, std::size_t tracks, std::uint16_t division) {
        const std::array<std::uint8_t, 14> header{
            'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, format, static_cast<std::uint8_t>(tracks >> 8),
            static_cast<std::uint8_t>(tracks & 0xFF), static_cast<std::uint8_t>(division >> 8),
            static_cast<std::uint8_t>(division & 0xFF)};
        out_.Block(header);
    }

    void BeginChunk() {
        constexpr std::array<std::uint8_t, 8> kHeader{'M', 'T', 'r', 'k', 0, 0, 0, 0};
        out_.Block(kHeader);
        chunkStart_ = out_.Size();
        lastTick_ = 0;
        lastStatus_ = 0;
    }

    void EndChunk() {
        out_.PatchWord(chunkStart_ - 4, static_cast<std::uint32_t>(out_.Size() - chunkStart_));
    }

    void Write(const MidiEvent& event) {
        if (event.kind == kShortMessage) [[likely]] {
            WriteShort(event);
        } else {
            WriteLong(event);
        }
    }

    std::vector<std::uint8_t> Take() { return out_.Take(); }

    [[noreturn]] void Fail() { RaiseMidiError(host_, texts::kCoding); }

private:
    void WriteShort(const MidiEvent& event) {
        if (event.length == 0) {
            return;
        }
        if (!event.IsChannelMessage()) [[unlikely]] {
            Fail();
        }
        out_.BeginEvent();
        Delta(event.tick);
        if (!options_.useRunningStatus || event.status != lastStatus_) {
            out_.Byte(event.status);
        }
        lastStatus_ = event.status;
        if (event.length > 1) {
            out_.Byte(event.data1 & 0x7F);
        }
        if (event.length > 2) {
            out_.Byte(event.data2 & 0x7F);
        }
    }

    [[gnu::noinline]] void WriteLong(const MidiEvent& event) {
        const bool endOfTrack = event.IsMeta(kMetaEndOfTrack);
        const bool port = event.IsMeta(kMetaPort) && event.length == 1;
        if (event.kind != kLongMessage) {
            Fail();
        }
        if ((event.length == 0 && !endOfTrack) || (port && options_.omitPortEvents)) {
            return;
        }
        out_.BeginEvent();
        Delta(event.tick);
        out_.Byte(event.status);
        lastStatus_ = 0;
        WritePayload(event);
    }

    void WritePayload(const MidiEvent& event) {
        switch (event.status) {
        case kSystemExclusive:
        case kEscape:
            Block(event.Payload());
            break;
        case kMeta:
            out_.Byte(event.metaType);
            if (event.metaType == kMetaLyric && options_.adjustLyric) {
                Block(options_.adjustLyric(event.Payload()));
            } else {
                Block(event.Payload());
            }
            break;
        case 0xF8:
        case 0xFA:
        case 0xFB:
        case 0xFC:
            break;
        default:
            Fail();
        }
    }

    void Block(std::span<const std::uint8_t> bytes) {
        out_.Quantity(static_cast<std::uint32_t>(bytes.size()));
        if (!bytes.empty()) {
            out_.Block(bytes);
        }
    }

    // An event before the one written last gets delta 0.
    void Delta(std::int32_t tick) {
        out_.Quantity(static_cast<std::uint32_t>(std::max(tick - lastTick_, 0)));
        lastTick_ = std::max(tick, lastTick_);
    }

    const EncodeOptions& options_;
    MessageHost& host_;
    ByteWriter out_;
    std::size_t chunkStart_ = 0;
    std::int32_t lastTick_ = 0;
    std::uint8_t lastStatus_ = 0;
};

bool IsPortEvent(const MidiEvent& event) {
    return event.kind == kLongMessage && event.IsMeta(kMetaPort) && event.length == 1;
}

// Walks over the events of all tracks in tick order, equal ticks in track order.
class TrackMerger {
public:
    explicit TrackMerger(const Song& song) {
        for (std::size_t i = 0; i < song.tracks.size(); ++i) {
            Add(song.tracks[i].first, i);
        }
    }

    template <typename Visitor>
    void ForEach(Visitor&& visit) {
        while (!queue_.empty()) {
            auto [tick, track, event] = queue_.top();
            queue_.pop();
            // As long as this track is first, the queue need not be touched.
            do {
                visit(*event);
                event = event->next;
            } while (event && ComesFirst(event->tick, track));
            Add(event, track);
        }
    }

private:
    struct Head {
        std::int32_t tick;
        std::size_t track;
        EventLink event;
        bool operator>(const Head& other) const {
            return std::pair(tick, track) > std::pair(other.tick, other.track);
        }
    };

    void Add(EventLink event, std::size_t track) {
        if (event) {
            queue_.push({event->tick, track, event});
        }
    }
    bool ComesFirst(std::int32_t tick, std::size_t track) const {
        return queue_.empty() ||
               std::pair(tick, track) < std::pair(queue_.top().tick, queue_.top().track);
    }

    std::priority_queue<Head, std::vector<Head>, std::greater<>> queue_;
};

} // namespace

std::vector<std::uint8_t> EncodeFormat0(const Song& song, const EncodeOptions& options,
                                        MessageHost& host) {
    EventWriter writer(song, options, host);
    writer.Header(0, 1, song.division);
    writer.BeginChunk();
    bool portWritten = false;
    const MidiEvent* end = nullptr;
    TrackMerger(song).ForEach([&](const MidiEvent& event) {
        if (event.IsMeta(kMetaEndOfTrack)) {
            end = &event;
        } else if (!IsPortEvent(event) || !std::exchange(portWritten, true)) {
            writer.Write(event);
        }
    });
    if (end == nullptr) {
        writer.Fail();
    }
    writer.Write(*end);
    writer.EndChunk();
    return writer.Take();
}

std::vector<std::uint8_t> EncodeFormat1(const Song& song, const EncodeOptions& options,
                                        MessageHost& host) {
    EventWriter writer(song, options, host);
    if (song.tracks.empty() || song.tracks.size() > std::numeric_limits<std::uint16_t>::max()) {
        writer.Fail();
    }
    writer.Header(1, song.tracks.size(), song.division);
    for (const Track& track : song.tracks) {
        writer.BeginChunk();
        for (const MidiEvent* event = track.first.Get(); event != nullptr;
             event = event->next.Get()) {
            writer.Write(*event);
        }
        writer.EndChunk();
    }
    return writer.Take();
}

} // namespace tracksmith::song
