#pragma once

#include <algorithm>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include "song/prefetch.h"
#include "song/song.h"

namespace tracksmith::song {

/// When an event of the track is played, in milliseconds of the play position.
inline std::int64_t DueMs(const Track& track, const MidiEvent& event) {
    return std::int64_t{event.timeMs} - track.timeShiftMs;
}

/// Order of a walk: by tick, equal ticks in track order.
struct TickOrder {
    using Key = std::uint64_t;
    static constexpr Key kNone = std::numeric_limits<Key>::max();

    static Key KeyOf(const MidiEvent& event, const Track& /*track*/, std::size_t index) {
        return (static_cast<Key>(event.tick) << 32) | index;
    }
    static std::size_t TrackOf(Key key) { return static_cast<std::size_t>(key & 0xFFFF'FFFF); }
};

/// Order of a walk: as the song is played, with the time shifts of the tracks; what is due in the
/// same millisecond by tick, then in track order. Needs clock times.
struct DueOrder {
    struct Key {
        std::int64_t dueMs;
        std::int32_t tick;
        std::uint32_t track;
        // NOLINTNEXTLINE(modernize-use-nullptr): the comparison's own zero
        friend auto operator<=>(const Key&, const Key&) = default;
    };
    static constexpr Key kNone{std::numeric_limits<std::int64_t>::max(), 0, 0};

    static Key KeyOf(const MidiEvent& event, const Track& track, std::size_t index) {
        return {DueMs(track, event), event.tick, static_cast<std::uint32_t>(index)};
    }
    static std::size_t TrackOf(const Key& key) { return key.track; }
};

/// Choice of a walk: every event of every track.
struct EveryEvent {
    static bool Enters(const Track& /*track*/) { return true; }
    static bool Wants(const MidiEvent& /*event*/) { return true; }
    static ConstEventLink EndOf(const Track& /*track*/) { return {}; }
};

/// Walks over the events of all tracks in the order `Order`: a tournament in which each track
/// enters with its next event, the smallest key wins. `Choice` says which tracks enter, where each
/// ends (and by `BeginOf(track, index)`, if it has that, where it begins), and which events are
/// wanted. The song must keep its structure and its times meanwhile.
/// Allocates only when it begins; throws std::bad_alloc then.
template <typename Order, typename Choice = EveryEvent, typename AnySong = const Song>
class TrackWalk {
public:
    using Event = std::conditional_t<std::is_const_v<AnySong>, const MidiEvent, MidiEvent>;

    explicit TrackWalk(AnySong& song, Choice choice = {})
        : song_(song),
          choice_(std::move(choice)),
          leaves_(std::bit_ceil(std::max<std::size_t>(song.tracks.size(), 1))) {
        keys_.resize(2 * leaves_, Order::kNone);
        lanes_.resize(song.tracks.size());
        for (std::size_t track = 0; track < lanes_.size(); ++track) {
            if (choice_.Enters(song.tracks[track])) {
                lanes_[track].end = choice_.EndOf(song.tracks[track]).Get();
                Follow(track, BeginOf(track));
                Advance(track);
            }
        }
        winner_ = keys_[1];
    }

    /// The event that comes next, null behind the last.
    Event* Peek() const { return winner_ == Order::kNone ? nullptr : lanes_[NextTrack()].event; }

    /// Index of its track; only while there is one.
    std::size_t NextTrack() const { return Order::TrackOf(winner_); }

    /// The next event like Peek, and goes on to the following one.
    Event* Take() {
        if (winner_ == Order::kNone) {
            return nullptr;
        }
        const std::size_t track = NextTrack();
        Event* const event = lanes_[track].event;
        PrefetchForReading(event);
        winner_ = Advance(track);
        return event;
    }

    /// Hands the events of the track that comes first to `take`, for as long as no other track
    /// comes before them and `take` returns true; the event for which it returns false comes next.
    /// Many events in a row cost a fraction of Take's time. `take` must not change the song.
    template <typename TakeOne>
    void TakeRun(TakeOne&& take) {
        if (winner_ == Order::kNone) {
            return;
        }
        const std::size_t track = NextTrack();
        const Key others = LeastBeside(leaves_ + track);
        Event* event = lanes_[track].event;
        for (Key key = winner_; key < others && take(*event);) {
            PrefetchForReading(event);
            event = NextWanted(track, event->next.Get());
            key = KeyOf(track, event);
        }
        Follow(track, event);
        winner_ = Advance(track);
    }

private:
    using Key = typename Order::Key;

    // The next event of a track and the one after it. The key of the latter is ready before the
    // tournament needs it, which would otherwise wait for the event's memory.
    struct Lane {
        Event* event = nullptr;
        Event* after = nullptr;
        const MidiEvent* end = nullptr;
        Key afterKey = Order::kNone;
    };

    Event* BeginOf(std::size_t track) {
        if constexpr (requires { choice_.BeginOf(song_.tracks[track], track); }) {
            return choice_.BeginOf(song_.tracks[track], track).Get();
        } else {
            return song_.tracks[track].first.Get();
        }
    }

    // Makes the first wanted event from `event` on the one after the next.
    void Follow(std::size_t track, Event* event) {
        Lane& lane = lanes_[track];
        lane.after = NextWanted(track, event);
        lane.afterKey = KeyOf(track, lane.after);
    }

    // The first wanted event from `event` on; null when there is none.
    Event* NextWanted(std::size_t track, Event* event) const {
        const MidiEvent* const end = lanes_[track].end;
        while (event != end && !choice_.Wants(*event)) {
            event = event->next.Get();
        }
        return event == end ? nullptr : event;
    }

    Key KeyOf(std::size_t track, const Event* event) const {
        return event == nullptr ? Order::kNone : Order::KeyOf(*event, song_.tracks[track], track);
    }

    // The winner if the track at this leaf did not enter.
    Key LeastBeside(std::size_t node) const {
        Key least = Order::kNone;
        for (; node > 1; node /= 2) {
            least = std::min(least, keys_[node ^ 1]);
        }
        return least;
    }

    // Lets the track enter with its next event. Returns the winner.
    Key Advance(std::size_t track) {
        Lane& lane = lanes_[track];
        const Key winner = Enter(leaves_ + track, lane.afterKey);
        lane.event = lane.after;
        if (lane.after != nullptr) {
            Follow(track, lane.after->next.Get());
        }
        return winner;
    }

    // The winner so far goes up in a register: read back from the tree, it would cost twice as
    // much.
    Key Enter(std::size_t node, Key winner) {
        keys_[node] = winner;
        for (; node > 1; node /= 2) {
            winner = std::min(winner, keys_[node ^ 1]);
            keys_[node / 2] = winner;
        }
        return winner;
    }

    AnySong& song_;
    Choice choice_;
    std::size_t leaves_;
    std::vector<Key> keys_; // the root at 1, the tracks from leaves_ on
    std::vector<Lane> lanes_;
    Key winner_ = Order::kNone;
};

} // namespace tracksmith::song
