#include "song/practice_tempo.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "song/midi_file_writer.h"

namespace tracksmith::song {
namespace {

using namespace test;

// 100 BPM, from tick 960 on 240, from 1920 on 4: slower than any practice tempo.
DecodedSong ThreeTempos() {
    return DecodedSong(MidiFileBuilder()
                           .Track(TrackBuilder().Tempo(0, 600'000).Tempo(1920, 15'000'000).End())
                           .Track(TrackBuilder().Tempo(960, 250'000).Note(960, 0, 60, 1).End())
                           .Build());
}

struct Wish {
    std::int64_t tick;
    std::int64_t bpm;
    std::int64_t percent; // 0 where a tempo is wished
    std::int32_t offset;
    std::int32_t heard;
};

class TempoWishTest : public testing::TestWithParam<Wish> {};

TEST_P(TempoWishTest, BecomesAnOffsetWithinTheLimits) {
    DecodedSong decoded = ThreeTempos();
    const TimeMap& map = decoded.Timed().song;
    const Wish& wish = GetParam();
    const std::int64_t bpm =
        wish.percent == 0 ? wish.bpm : BpmOfPercent(map, wish.tick, wish.percent);
    EXPECT_EQ(TempoOffsetForBpm(map, wish.tick, bpm), wish.offset);
    const TimeMap moved = MovedTimeMap(map, wish.offset);
    EXPECT_EQ(BpmAt(moved, wish.tick), wish.heard);
    EXPECT_EQ(FileBpmAt(moved, wish.tick), FileBpmAt(map, wish.tick));
    if (wish.percent >= 50) {
        EXPECT_EQ(TempoPercentAt(moved, wish.tick), wish.percent);
    }
    // From any tempo the same wish leads to the same place.
    EXPECT_EQ(TempoOffsetForBpm(moved, wish.tick, bpm), wish.offset);
}

INSTANTIATE_TEST_SUITE_P(Wishes, TempoWishTest,
                         testing::Values(Wish{0, 120, 0, 20, 120}, Wish{959, 25, 0, -75, 25},
                                         Wish{960, 120, 0, -120, 120}, Wish{960, 24, 0, -215, 25},
                                         Wish{0, 65'536, 0, 65'435, 65'502},
                                         Wish{0, std::int64_t{1} << 40, 0, 65'435, 65'502},
                                         Wish{960, -5, 0, -215, 25}, Wish{1920, 4, 0, 0, 4},
                                         Wish{1920, 5, 0, 21, 25}, Wish{0, 0, 100, 0, 100},
                                         Wish{1920, 0, 100, 0, 4}, Wish{0, 0, 90, -10, 90},
                                         Wish{960, 0, 51, -118, 122}, Wish{960, 0, 1, -215, 25},
                                         Wish{0, 0, 1000, 900, 1000}));

TEST(PracticeTempo, TemposMoveByTheirBpmAndStayWithinTheLimits) {
    constexpr std::array<std::array<std::int32_t, 3>, 6> kMoves{
        {{500'000, 30, 400'000},
         {500'000, -96, 2'400'000},
         {500'000, -2'000'000'000, 2'400'000},
         {500'000, 2'000'000'000, 916},
         {15'000'000, 1, 2'400'000},
         {517'241, 0, 517'241}}};
    for (const auto& [file, offset, moved] : kMoves) {
        EXPECT_EQ(MovedTempo(file, offset), moved) << file << " by " << offset;
    }
    EXPECT_EQ(FileBpmAt({}, 0), 120);
    EXPECT_EQ(BpmAt({}, 0), 120);
}

// Also where a payload is too short or too long, or no tempo at all.
TEST(PracticeTempo, BackAtTheFilesTempoEveryByteIsAsInTheFile) {
    DecodedSong decoded(MidiFileBuilder()
                            .Track(TrackBuilder()
                                       .Tempo(0, 600'001)
                                       .Tempo(10, 0)
                                       .Meta(10, 0x51, {7, 0xA1})
                                       .Meta(10, 0x51, {0, 0})
                                       .Meta(10, 0x51, {7, 0xA1, 0x20, 0x55})
                                       .Tempo(10, 0xFFFFFF)
                                       .End())
                            .Track(TrackBuilder().Tempo(15, 1).End())
                            .Build());
    Song& song = decoded.Timed().song;
    const Bytes file = EncodeFormat1(song, {}, decoded.host);
    TempoEvents events;
    events.Collect(song, false);
    for (const std::int32_t offset : {30, -400, 900, 1}) {
        events.Rewrite(offset);
        EXPECT_NE(EncodeFormat1(song, {}, decoded.host), file);
        UpdateTimeZoneData(song); // as after an edit
        EXPECT_EQ(BpmAt(song, 0), std::max(100 + offset, 25)) << offset;
        events.Collect(song, true);
        EXPECT_EQ(song.tempos[0].fileTempo, 600'001);
    }
    events.Rewrite(0);
    EXPECT_EQ(EncodeFormat1(song, {}, decoded.host), file);
    EXPECT_EQ(CheckSong(song), "");
}

} // namespace
} // namespace tracksmith::song
