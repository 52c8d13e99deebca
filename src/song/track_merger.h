#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "song/prefetch.h"
#include "song/song.h"

namespace tracksmith::song {

/// Walks over the events of all tracks in tick order, equal ticks in track order: a tournament in
/// which each track enters with its next event, the smallest key wins.
class TrackMerger {
public:
    explicit TrackMerger(const Song& song) : leaves_(std::bit_ceil(song.tracks.size())) {
        keys_.resize(2 * leaves_, kNone);
        lanes_.resize(song.tracks.size());
        for (std::size_t track = 0; track < lanes_.size(); ++track) {
            lanes_[track].after = song.tracks[track].first.Get();
            lanes_[track].afterKey = KeyOf(lanes_[track].after, track);
            Advance(track);
        }
    }

    /// Hands every event to `visit(const MidiEvent&)`.
    template <typename Visitor>
    void ForEach(Visitor&& visit) {
        for (std::uint64_t winner = keys_[1]; winner != kNone;) {
            const auto track = static_cast<std::size_t>(winner & 0xFFFF'FFFF);
            const MidiEvent& event = *lanes_[track].event;
            PrefetchForReading(&event);
            winner = Advance(track);
            visit(event);
        }
    }

private:
    static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

    // The next event of a track and the one after it. The key of the latter is ready before the
    // tournament needs it, which would otherwise wait for the event's memory.
    struct Lane {
        const MidiEvent* event = nullptr;
        const MidiEvent* after = nullptr;
        std::uint64_t afterKey = kNone;
    };

    static std::uint64_t KeyOf(const MidiEvent* event, std::size_t track) {
        return event != nullptr ? (static_cast<std::uint64_t>(event->tick) << 32) | track : kNone;
    }

    // Lets the track enter with its next event. Returns the winner.
    std::uint64_t Advance(std::size_t track) {
        Lane& lane = lanes_[track];
        const std::uint64_t winner = Enter(leaves_ + track, lane.afterKey);
        lane.event = lane.after;
        if (lane.after != nullptr) {
            lane.after = lane.after->next.Get();
            lane.afterKey = KeyOf(lane.after, track);
        }
        return winner;
    }

    // The winner so far goes up in a register: read back from the tree, it would cost twice as
    // much.
    std::uint64_t Enter(std::size_t node, std::uint64_t winner) {
        keys_[node] = winner;
        for (; node > 1; node /= 2) {
            winner = std::min(winner, keys_[node ^ 1]);
            keys_[node / 2] = winner;
        }
        return winner;
    }

    std::size_t leaves_;
    std::vector<std::uint64_t> keys_; // the root at 1, the tracks from leaves_ on
    std::vector<Lane> lanes_;
};

} // namespace tracksmith::song
