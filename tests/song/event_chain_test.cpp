#include "song/event_chain.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include "support/song_assert.h"

#include "song/song_snapshot.h"

namespace tracksmith::song {
namespace {

using namespace test;

Bytes TwoTracks() {
    return MidiFileBuilder()
        .Track(TrackBuilder().Tempo(0, 400'000).Text(0, 3, "Song").End())
        .Track(TrackBuilder()
                   .Note(10, 0, 60, 1)
                   .Note(10, 0, 61, 1)
                   .Note(0, 0, 62, 1)
                   .Sysex(10, {0x43, 0xF7})
                   .End(2000))
        .Build();
}

EventLink Note(Song& song, int tick, int key) {
    return NewShortEvent(song.pool, tick, kNoteOn, static_cast<std::uint8_t>(key), 9);
}

// Ways to write events of a song: they exist for a song that may be changed and for no other.
template <typename AnySong>
concept WritesFields = requires(AnySong& song) {
    song.tracks[0].first->next->tick = 1;
};
template <typename AnySong>
concept WritesPayloads = requires(AnySong& song) {
    song.tracks[0].last->data.Bytes()[0] = 1;
};
template <typename AnySong>
concept TakesLinks = requires(AnySong& song, EventLink link) {
    link = song.tracks[0].cursor;
};
template <typename AnySong>
concept TakesPointers = requires(AnySong& song, MidiEvent* event) {
    event = song.tracks[0].first.Get();
};
template <typename AnySong>
concept MovesEvents = requires(AnySong& song, Track& track) {
    track.first = song.tracks[0].first;
};
static_assert(WritesFields<Song> && !WritesFields<const Song>);
static_assert(WritesPayloads<Song> && !WritesPayloads<const Song>);
static_assert(TakesLinks<Song> && !TakesLinks<const Song>);
static_assert(TakesPointers<Song> && !TakesPointers<const Song>);
static_assert(MovesEvents<Song> && !MovesEvents<const Song>);
static_assert(!std::is_copy_constructible_v<EventLinkField>); // auto link = track.first;

TEST(EventChain, InsertsByTickBehindEqualTicksAndInsideTheEnds) {
    DecodedSong decoded(TwoTracks());
    Song& song = decoded.song;
    Track& track = song.tracks[1];
    for (const int tick : {20, 0, 5, 999, 30}) {
        InsertByTick(track, Note(song, tick, 70));
        EXPECT_EQ(CheckSong(song), "") << tick;
    }
    EXPECT_EQ(Listing(track),
              "0 904609; 5 904609; 10 903C01; 20 903D01; 20 903E01; 20 904609; "
              "30 F0 43F7; 30 904609; 999 904609");
    EXPECT_TRUE(track.last->IsMeta(kMetaEndOfTrack));
    InsertAfter(track, track.first, Note(song, 0, 71));
    EXPECT_EQ(track.first->next->data1, 71);
    EXPECT_EQ(CheckSong(song), "");
}

TEST(EventChain, InsertAfterTheLastEventMovesTheEnd) {
    Song song;
    Track track;
    InitTrack(song, track);
    EXPECT_EQ(track.eventCount, 1);
    InsertAfter(track, track.first, Note(song, 1, 60));
    InsertByTick(track, Note(song, 4, 61));
    EXPECT_EQ(track.last->data1, 61);
    AppendEvent(track, NewMetaEvent(song.pool, 9, kMetaEndOfTrack, {}));
    EXPECT_EQ(Listing(track), "1 903C09; 4 903D09");
    EXPECT_EQ(track.eventCount, 4);
}

TEST(EventChain, RemovesAnywhereAndReusesTheMemory) {
    DecodedSong decoded(TwoTracks());
    Song& song = decoded.song;
    Track& track = song.tracks[1];
    RemoveEvent(song, track, track.first->next);
    EXPECT_EQ(CheckSong(song), "");
    RemoveEvent(song, track, track.last->prev); // with its payload
    EXPECT_EQ(CheckSong(song), "");
    EXPECT_EQ(Listing(track), "20 903D01; 20 903E01");

    const std::size_t used = song.pool.UsedBytes();
    for (int i = 0; i < 1000; ++i) {
        InsertByTick(track, NewSysexEvent(song.pool, 25, Bytes{0x7E, 0xF7}));
        InsertByTick(track, Note(song, 25, 64));
        RemoveEvent(song, track, track.last->prev);
        RemoveEvent(song, track, track.last->prev);
    }
    EXPECT_EQ(song.pool.UsedBytes(), used);
    EXPECT_EQ(Listing(track), "20 903D01; 20 903E01");
}

TEST(EventChain, UnlinkedEventsKeepTheirBytesAndCanBeLinkedElsewhere) {
    DecodedSong decoded(TwoTracks());
    Song& song = decoded.song;
    const EventLink sysex = song.tracks[1].last->prev;
    UnlinkEvent(song.tracks[1], sysex);
    EXPECT_FALSE(sysex->next);
    EXPECT_FALSE(sysex->prev);
    InsertByTick(song.tracks[0], sysex);
    EXPECT_EQ(Listing(song.tracks[0]), "0 FF51 061A80; 0 FF03 536F6E67; 30 F0 43F7");
    EXPECT_EQ(CheckSong(song), "");
}

TEST(EventPool, FreedPayloadsOfEverySizeAreReusedAndNeverOverlap) {
    EventPool pool;
    const std::vector<std::size_t> sizes = {1,    11,   12,   13,   28,      29,     1019,
                                            1020, 1021, 5000, 5000, 400'000, 400'000};
    std::size_t used = 0;
    for (int round = 0; round < 3; ++round) {
        std::vector<EventData> blocks;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            blocks.push_back(pool.NewData(Bytes(sizes[i], static_cast<std::uint8_t>(i + 1))));
        }
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const Bytes held(blocks[i].Bytes().begin(), blocks[i].Bytes().end());
            EXPECT_EQ(held, Bytes(sizes[i], static_cast<std::uint8_t>(i + 1)));
            pool.FreeData(blocks[i]);
        }
        used = round == 0 ? pool.UsedBytes() : used;
        EXPECT_EQ(pool.UsedBytes(), used);
    }
    EXPECT_TRUE(pool.NewData({}).Empty());
}

TEST(EventPool, TwoSongsAtOnceDoNotMix) {
    DecodedSong first(RandomFile(1, 1));
    DecodedSong second(RandomFile(2, 1));
    const std::string before = first.List(0);
    for (int i = 0; i < 20'000; ++i) {
        InsertByTick(second.song.tracks[0], Note(second.song, 0, 60));
    }
    EXPECT_EQ(first.List(0), before);
    ClearSong(second.song);
    EXPECT_EQ(first.List(0), before);
    EXPECT_EQ(CheckSong(first.song), "");
}

TEST(EventPool, SongsThatChangePlacesKeepWhatTheyOwn) {
    auto first = std::make_unique<DecodedSong>(TwoTracks());
    const std::string before = first->List(1);
    Song second;
    second.Swap(first->song);
    first.reset(); // frees what belonged to the other
    EXPECT_EQ(CheckSong(second), "");
    DecodedSong third(RandomFile(1, 1)); // takes the memory that is free
    second.Swap(third.song);
    EXPECT_EQ(third.List(1), before);
    second.Swap(third.song);
    InsertByTick(second.tracks[1], Note(second, 15, 70));
    EXPECT_EQ(CheckSong(second), "");
}

TEST(EventPool, ManyLoadsIntoOneSongTakeNoMoreMemory) {
    DecodedSong decoded(RandomFile(3, 1));
    const std::size_t used = decoded.song.pool.UsedBytes();
    const std::string first = decoded.List(1);
    for (int i = 0; i < 5; ++i) {
        ClearSong(decoded.song);
        DecodeMidiData(decoded.song, RandomFile(3, 1), {}, decoded.host);
    }
    EXPECT_EQ(decoded.song.pool.UsedBytes(), used);
    EXPECT_EQ(decoded.List(1), first);
}

TEST(SongSnapshot, RestoresEverythingInPlaceAsOftenAsWanted) {
    DecodedSong decoded(TwoTracks());
    decoded.Timed();
    Song& song = decoded.song;
    RemoveEvent(song, song.tracks[1], song.tracks[1].first->next); // leaves a free record
    const std::string before = decoded.List(1);
    const EventLink kept = song.tracks[1].first->next;
    SongSnapshot snapshot;
    snapshot.Restore(song); // holds nothing yet
    EXPECT_EQ(decoded.List(1), before);
    snapshot.Take(song);
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 30'000; ++i) { // over several chunks of memory
            InsertByTick(song.tracks[1], Note(song, 40, 60));
        }
        kept->data1 = 1;
        RemoveEvent(song, song.tracks[1], song.tracks[1].last->prev);
        RemoveEvent(song, song.tracks[0], song.tracks[0].first->next);
        song.tracks[0].name = "changed";
        song.tempos[0].tempo = 1;
        song.tracks.pop_back();
        song.trackCount = 1;
        snapshot.Restore(song);
        ASSERT_EQ(CheckSong(song), "");
        EXPECT_EQ(decoded.List(0), "0 FF51 061A80; 0 FF03 536F6E67");
        EXPECT_EQ(decoded.List(1), before);
        EXPECT_EQ(song.tracks[1].first->next, kept);
        EXPECT_EQ(song.tracks[0].name, "Song");
        EXPECT_EQ(song.tempos[0].tempo, 400'000);
        const std::size_t used = song.pool.UsedBytes();
        InsertByTick(song.tracks[1], Note(song, 40, 60)); // reuses the freed record
        EXPECT_EQ(song.pool.UsedBytes(), used);
        EXPECT_EQ(CheckSong(song), "");
        snapshot.Restore(song);
    }
    EXPECT_EQ(decoded.List(1), before);
    snapshot.Drop();
    EXPECT_FALSE(snapshot.Valid());
    song.tracks[0].name = "new";
    snapshot.Restore(song);
    EXPECT_EQ(song.tracks[0].name, "new");
}

struct Damage {
    const char* name;
    std::function<void(Song&)> apply;
};

class CheckSongTest : public testing::TestWithParam<Damage> {};

TEST_P(CheckSongTest, FindsTheDamage) {
    DecodedSong decoded(TwoTracks());
    GetParam().apply(decoded.song);
    EXPECT_NE(CheckSong(decoded.song), "");
}

EventLink Second(Song& song) {
    return song.tracks[1].first->next->next;
}

INSTANTIATE_TEST_SUITE_P(
    Damages, CheckSongTest,
    testing::Values(
        Damage{"PrevLink", [](Song& song) { Second(song)->prev = song.tracks[1].first; }},
        Damage{"SkippingNext", [](Song& song) { Second(song)->prev->next = Second(song)->next; }},
        Damage{"Cycle", [](Song& song) { Second(song)->next = song.tracks[1].first->next; }},
        Damage{"CutChain", [](Song& song) { Second(song)->next = EventLink(); }},
        Damage{"CountTooHigh", [](Song& song) { ++song.tracks[1].eventCount; }},
        Damage{"CountTooLow", [](Song& song) { --song.tracks[1].eventCount; }},
        Damage{"FallingTick", [](Song& song) { Second(song)->tick = 3; }},
        Damage{"NegativeTick", [](Song& song) { Second(song)->tick = -1; }},
        Damage{"HeadGone",
               [](Song& song) { RemoveEvent(song, song.tracks[1], song.tracks[1].first); }},
        Damage{"HeadPort", [](Song& song) { song.tracks[1].first->data.Bytes()[0] = 1; }},
        Damage{"EndGone",
               [](Song& song) { RemoveEvent(song, song.tracks[1], song.tracks[1].last); }},
        Damage{"EndTooEarly",
               [](Song& song) {
                   InsertAfter(song.tracks[1], Second(song),
                               NewMetaEvent(song.pool, 20, kMetaEndOfTrack, {}));
               }},
        Damage{"EndElsewhere", [](Song& song) { --song.tracks[1].last->tick; }},
        Damage{"EventBehindTheEnd",
               [](Song& song) { song.tracks[1].last->prev->tick = song.songLength + 1; }},
        Damage{"VelocityZero", [](Song& song) { Second(song)->data2 = 0; }},
        Damage{"KindOfStatus", [](Song& song) { Second(song)->kind = kLongMessage; }},
        Damage{"TrackCount", [](Song& song) { ++song.trackCount; }},
        Damage{"TempoCount", [](Song& song) { ++song.tempoCount; }},
        Damage{"KeySignatures", [](Song& song) { song.keySignatures.pop_back(); }}),
    [](const auto& damage) { return std::string(damage.param.name); });

} // namespace
} // namespace tracksmith::song
