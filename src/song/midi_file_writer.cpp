#include "song/midi_file_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

#include "song/byte_writer.h"
#include "song/prefetch.h"
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
        const std::array<std::uint8_t, 14> header{'M',
                                                  'T',
                                                  'h',
                                                  'd',
                                                  0,
                                                  0,
                                                  0,
                                                  6,
                                                  0,
                                                  format,
                                                  static_cast<std::uint8_t>(tracks >> 8),
                                                  static_cast<std::uint8_t>(tracks & 0xFF),
                                                  static_cast<std::uint8_t>(division >> 8),
                                                  static_cast<std::uint8_t>(division & 0xFF)};
        out_.Block(header);
    }

    void BeginChunk() {
        constexpr std::array<std::uint8_t, 8> kHeader{'M', 'T', 'r', 'k', 0, 0, 0, 0};
        out_.Block(kHeader);
        chunkStart_ = out_.Size();
        state_ = {};
    }

    void EndChunk() {
        out_.PatchWord(chunkStart_ - 4, static_cast<std::uint32_t>(out_.Size() - chunkStart_));
    }

    void Write(const MidiEvent& event) {
        if (IsPlain(event)) [[likely]] {
            std::uint8_t* p = out_.BeginEvent();
            PutShort(p, state_, event);
            out_.EndEvent(p);
        } else {
            WriteOther(event);
        }
    }

    // Like Write for every event of a chain. The state is held in locals, since through memory it
    // would pass from event to event at half the speed.
    void WriteChain(EventLink first) {
        State state = state_;
        std::uint8_t* p = out_.BeginEvent();
        const std::uint8_t* limit = out_.LastStart();
        for (const MidiEvent* event = first.Get(); event != nullptr; event = event->next.Get()) {
            PrefetchForReading(event);
            if (IsPlain(*event) && p <= limit) [[likely]] {
                PutShort(p, state, *event);
                continue;
            }
            out_.EndEvent(p);
            state_ = state;
            Write(*event);
            state = state_;
            p = out_.BeginEvent();
        }
        out_.EndEvent(p);
        state_ = state;
    }

    std::vector<std::uint8_t> Take() { return out_.Take(); }

    [[noreturn]] void Fail() { RaiseMidiError(host_, texts::kCoding); }

private:
    // What the next event depends on.
    struct State {
        std::int32_t tick = 0;
        std::uint8_t status = 0;
    };

    // A channel message of two or three bytes.
    static bool IsPlain(const MidiEvent& event) {
        return event.kind == kShortMessage && event.IsChannelMessage() && event.length >= 2;
    }

    void PutShort(std::uint8_t*& p, State& state, const MidiEvent& event) const {
        static_assert(std::endian::native == std::endian::little);
        p = PutDelta(p, state, event.tick);
        // All bytes at once and without a branch; what is not part of the event is written over
        // by the next one.
        const std::uint32_t leaveOut = static_cast<std::uint32_t>(options_.useRunningStatus) &
                                       static_cast<std::uint32_t>(event.status == state.status);
        const std::uint32_t data = (event.data1 & 0x7FU) | ((event.data2 & 0x7FU) << 8);
        const std::uint32_t bytes = (event.status | (data << 8)) >> (8 * leaveOut);
        std::memcpy(p, &bytes, sizeof(bytes));
        state.status = event.status;
        p += static_cast<std::uint32_t>(std::min(event.length, 3)) - leaveOut;
    }

    void WriteOther(const MidiEvent& event) {
        if (event.kind == kLongMessage) {
            WriteLong(event);
        } else if (event.kind != kShortMessage || event.length != 0) {
            Fail();
        }
    }

    [[gnu::noinline]] void WriteLong(const MidiEvent& event) {
        const bool endOfTrack = event.IsMeta(kMetaEndOfTrack);
        const bool port = event.IsMeta(kMetaPort) && event.length == 1;
        if ((event.length == 0 && !endOfTrack) || (port && options_.omitPortEvents)) {
            return;
        }
        std::uint8_t* p = PutDelta(out_.BeginEvent(), state_, event.tick);
        *p++ = event.status;
        state_.status = 0;
        WritePayload(event, p);
    }

    void WritePayload(const MidiEvent& event, std::uint8_t* p) {
        switch (event.status) {
            case kSystemExclusive:
            case kEscape:
                Block(p, event.Payload());
                break;
            case kMeta:
                *p++ = event.metaType;
                if (event.metaType == kMetaLyric && options_.adjustLyric) {
                    Block(p, options_.adjustLyric(event.Payload()));
                } else {
                    Block(p, event.Payload());
                }
                break;
            case 0xF8:
            case 0xFA:
            case 0xFB:
            case 0xFC:
                out_.EndEvent(p);
                break;
            default:
                Fail();
        }
    }

    void Block(std::uint8_t* p, std::span<const std::uint8_t> bytes) {
        out_.EndEvent(ByteWriter::PutQuantity(p, static_cast<std::uint32_t>(bytes.size())));
        if (!bytes.empty()) {
            out_.Block(bytes);
        }
    }

    // An event before the one written last gets delta 0.
    static std::uint8_t* PutDelta(std::uint8_t* p, State& state, std::int32_t tick) {
        const std::int32_t delta = std::max(tick - state.tick, 0);
        state.tick = std::max(tick, state.tick);
        return ByteWriter::PutQuantity(p, static_cast<std::uint32_t>(delta));
    }

    const EncodeOptions& options_;
    MessageHost& host_;
    ByteWriter out_;
    std::size_t chunkStart_ = 0;
    State state_;
};

bool IsPortEvent(const MidiEvent& event) {
    return event.kind == kLongMessage && event.IsMeta(kMetaPort) && event.length == 1;
}

// Walks over the events of all tracks in tick order, equal ticks in track order: a tournament in
// which each track enters with its next event, the smallest key wins.
class TrackMerger {
public:
    explicit TrackMerger(const Song& song) : leaves_(std::bit_ceil(song.tracks.size())) {
        keys_.resize(2 * leaves_, kNone);
        for (const Track& track : song.tracks) {
            next_.push_back(track.first);
            keys_[leaves_ + next_.size() - 1] = KeyOf(next_.size() - 1);
        }
        for (std::size_t node = leaves_; node-- > 1;) {
            Decide(node);
        }
    }

    template <typename Visitor>
    void ForEach(Visitor&& visit) {
        while (keys_[1] != kNone) {
            const auto track = static_cast<std::size_t>(keys_[1] & 0xFFFF'FFFF);
            const MidiEvent& event = *next_[track];
            PrefetchForReading(&event);
            next_[track] = event.next;
            std::size_t node = leaves_ + track;
            keys_[node] = KeyOf(track);
            visit(event);
            while (node > 1) {
                node /= 2;
                Decide(node);
            }
        }
    }

private:
    static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t KeyOf(std::size_t track) const {
        const EventLink event = next_[track];
        return event ? (static_cast<std::uint64_t>(event->tick) << 32) | track : kNone;
    }
    void Decide(std::size_t node) { keys_[node] = std::min(keys_[2 * node], keys_[2 * node + 1]); }

    std::size_t leaves_;
    std::vector<std::uint64_t> keys_; // the root at 1, the tracks from leaves_ on
    std::vector<EventLink> next_;
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
        writer.WriteChain(track.first);
        writer.EndChunk();
    }
    return writer.Take();
}

} // namespace tracksmith::song
