#include "song/track_walk.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

namespace tracksmith::song {
namespace {

using namespace test;

/// An event with what the order of a walk depends on.
struct Seen {
    std::int64_t place;
    std::int32_t tick;
    const MidiEvent* event;
};

struct NotesOfOpenTracks {
    static bool Enters(const Track& track) { return track.ignored == 0; }
    static bool Wants(const MidiEvent& event) { return event.IsNoteOn(); }
    static ConstEventLink EndOf(const Track& track) { return track.cursor; }
};

// Chain by chain and then sorted: what a walk gives must be the same. Events stay behind those that
// stand before them in their chain, as End of Track behind meta events of a later tick.
template <typename Choice, typename Place>
std::vector<const MidiEvent*> Expected(const Song& song, Place place) {
    std::vector<Seen> seen;
    for (const Track& track : song.tracks) {
        std::int64_t latest = std::numeric_limits<std::int64_t>::min();
        std::int32_t latestTick = 0;
        for (ConstEventLink event = track.first;
             Choice::Enters(track) && event != Choice::EndOf(track); event = event->next) {
            if (Choice::Wants(*event)) {
                latest = std::max(latest, std::int64_t{place(track, *event)});
                latestTick = std::max(latestTick, event->tick);
                seen.push_back({latest, latestTick, event.Get()});
            }
        }
    }
    std::ranges::stable_sort(seen, [](const Seen& a, const Seen& b) {
        return a.place != b.place ? a.place < b.place : a.tick < b.tick;
    });
    std::vector<const MidiEvent*> events;
    for (const Seen& one : seen) {
        events.push_back(one.event);
    }
    return events;
}

template <typename Order, typename Choice>
std::vector<const MidiEvent*> Walked(const Song& song) {
    std::vector<const MidiEvent*> events;
    TrackWalk<Order, Choice> walk(song);
    while (const MidiEvent* next = walk.Peek()) {
        const Track& track = song.tracks[walk.NextTrack()];
        EXPECT_TRUE(Choice::Enters(track));
        EXPECT_EQ(walk.Take(), next);
        events.push_back(next);
    }
    EXPECT_EQ(walk.Take(), nullptr);
    return events;
}

TEST(TrackWalk, GivesTheWantedEventsInOrder) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        Dice dice(seed);
        DecodedSong decoded(RandomFile(seed, static_cast<int>(seed % 2), true));
        Song& song = decoded.Timed().song;
        EXPECT_EQ((Walked<TickOrder, EveryEvent>(song)),
                  Expected<EveryEvent>(song, [](const Track&, const MidiEvent& event) {
                      return std::int64_t{event.tick};
                  }));
        for (Track& track : song.tracks) {
            track.ignored = dice.Roll(4) == 0 ? 1 : 0;
            track.timeShiftMs = dice.Roll(3) * (dice.Roll(2000) - 1000);
            EventLink cursor = track.first;
            for (int i = dice.Roll(60); i > 0 && cursor; --i) {
                cursor = cursor->next;
            }
            track.cursor = cursor;
        }
        EXPECT_EQ((Walked<DueOrder, NotesOfOpenTracks>(song)),
                  Expected<NotesOfOpenTracks>(song, DueMs));
    }
    EXPECT_EQ(TrackWalk<TickOrder>(Song()).Take(), nullptr);
}

} // namespace
} // namespace tracksmith::song
