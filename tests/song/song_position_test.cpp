#include "song/song_position.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

namespace tracksmith::song {
namespace {

using namespace test;

Bytes Song4(std::uint64_t lastTick, const TrackBuilder& conductor = {}, int division = 480) {
    return MidiFileBuilder(1, division)
        .Track(TrackBuilder(conductor).End())
        .Track(TrackBuilder().Note(lastTick, 0, 60, 1).End())
        .Build();
}

TEST(SongPosition, TextHasTheSongsWidth) {
    DecodedSong decoded(Song4(50'000));
    const Song& song = decoded.Timed().song;
    EXPECT_EQ(SongPositionToMTC(song, (11 * 4 + 2) * 480 + 5), "012.03.005");
    EXPECT_EQ(SongPositionToMTC(song, 0), "001.01.000");
    EXPECT_EQ(SongPositionToMTC(song, -5), "001.01.000");
    DecodedSong coarse(Song4(50'000, TrackBuilder().TimeSignature(0, 12, 2), 24));
    EXPECT_EQ(SongPositionToMTC(coarse.Timed().song, 12 * 24 - 1), "001.12.23");
}

TEST(SongPosition, BeatsFollowTheDenominator) {
    DecodedSong six(Song4(9000, TrackBuilder().TimeSignature(0, 6, 3)));
    EXPECT_EQ(GetMeasureBeatFromSongPos(six.Timed().song, 1440 + 250), (MeasureBeatTick{2, 2, 10}));
    EXPECT_EQ(TicksInMeasureAtPos(six.song, 100), 1440);
    DecodedSong three(Song4(9000, TrackBuilder().TimeSignature(0, 3, 4)));
    EXPECT_EQ(GetMeasureBeatFromSongPos(three.Timed().song, 130), (MeasureBeatTick{1, 2, 10}));
    EXPECT_EQ(TicksInMeasureAtPos(three.song, 0), 360);
    DecodedSong change(Song4(9000, TrackBuilder().TimeSignature(1920, 3, 2)));
    EXPECT_EQ(TicksInMeasureAtPos(change.Timed().song, 1919), 1920);
    EXPECT_EQ(TicksInMeasureAtPos(change.song, 1920), 1440);
    EXPECT_EQ(GetMeasureBeatFromTime(change.song, 2000 + 1500), (MeasureBeatTick{3, 1, 0}));
    EXPECT_EQ(GetMeasureBeatFromTime(change.song, 2000 + 1500 - 1), (MeasureBeatTick{2, 3, 479}));
}

struct PositionRow {
    int measure;
    int beat;
    int tick;
    int result;
};

class TickOfPositionTest : public testing::TestWithParam<PositionRow> {};

// 4/4 for two measures, then 3/4; 5,010 ticks.
TEST_P(TickOfPositionTest, IsFoundOrInvalid) {
    DecodedSong decoded(
        Song4(5000, TrackBuilder().TimeSignature(0, 4, 2).TimeSignature(3840, 3, 2)));
    const PositionRow& row = GetParam();
    EXPECT_EQ(MTCToSongPosition(decoded.Timed().song, row.measure, row.beat, row.tick), row.result);
}

INSTANTIATE_TEST_SUITE_P(
    Positions, TickOfPositionTest,
    testing::Values(PositionRow{1, 1, 0, 0}, PositionRow{2, 4, 479, 3839},
                    PositionRow{3, 1, 0, 3840}, PositionRow{3, 3, 0, 4800},
                    PositionRow{1, 1, 480, 480}, // the whole division is allowed
                    PositionRow{1, 6, 0, 2400},  // the beat is not checked
                    PositionRow{3, 3, 209, 5009}, PositionRow{3, 3, 210, -1},
                    PositionRow{4, 1, 0, -1}, PositionRow{0, 1, 0, -1}, PositionRow{1, 0, 0, -1},
                    PositionRow{1, 1, -1, -1}, PositionRow{1, 1, 481, -1},
                    PositionRow{-1, 1, 0, -1}, PositionRow{2'147'483'647, 99, 480, -1}));

// With beats of quarters and eighths, and with time signatures that change on an eighth, every tick
// has a place of its own.
Bytes RandomMap(unsigned seed) {
    Dice dice(seed);
    const int divisions[] = {480, 96, 120, 384, 960, 24};
    const int division = divisions[dice.Roll(6)];
    TrackBuilder conductor;
    int tick = 0;
    for (int i = dice.Roll(8); i >= 0; --i) {
        int next = tick + dice.Roll(3) * dice.Roll(1500);
        if (dice.Roll(2) == 0) {
            const int eighth = division / 2;
            next = (next + eighth - 1) / eighth * eighth;
            conductor.TimeSignature(static_cast<std::uint64_t>(next - tick), 1 + dice.Roll(9),
                                    1 + dice.Roll(3));
        } else {
            conductor.Tempo(static_cast<std::uint64_t>(next - tick),
                            static_cast<std::uint32_t>(100'000 + dice.Roll(900'000)));
        }
        tick = next;
    }
    return Song4(4000, conductor, division);
}

TEST(SongPosition, EveryTickIsFoundAgainFromItsText) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        DecodedSong decoded(RandomMap(seed));
        const Song& song = decoded.Timed().song;
        std::string before;
        for (std::int32_t tick = 0; tick < song.songLength; ++tick) {
            const std::string text = SongPositionToMTC(song, tick);
            const MeasureBeatTick place = GetMeasureBeatFromSongPos(song, tick);
            const std::size_t point = text.find('.');
            const std::size_t second = text.find('.', point + 1);
            ASSERT_EQ(std::stoi(text.substr(0, point)), place.measure);
            ASSERT_EQ(std::stoi(text.substr(point + 1, second - point - 1)), place.beat);
            ASSERT_EQ(std::stoi(text.substr(second + 1)), place.tick);
            ASSERT_EQ(MTCToSongPosition(song, static_cast<std::int32_t>(place.measure),
                                        static_cast<std::int32_t>(place.beat),
                                        static_cast<std::int32_t>(place.tick)),
                      tick)
                << text << ", seed " << seed;
            ASSERT_LT(before, text) << "seed " << seed;
            before = text;
        }
    }
}

TEST(SongPosition, MillisecondsLeadToTheLastTickNotAfterThem) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        DecodedSong decoded(RandomMap(seed));
        const Song& song = decoded.Timed().song;
        for (std::int64_t ms = 0; ms < song.lengthMs; ms += 7) {
            const std::int64_t tick = MsToTick(song, ms);
            ASSERT_LE(TickToMs(song, tick), ms);
            ASSERT_GT(TickToMs(song, tick + 1), ms);
        }
        EXPECT_EQ(MsToTick(song, -1), 0);
        EXPECT_EQ(MsToTick(song, song.lengthMs + 1'000'000LL), song.songLength);
    }
}

TEST(SongPosition, ClockTimeIsWrittenInMinutes) {
    EXPECT_EQ(ClockText(0), "0:00");
    EXPECT_EQ(ClockText(225'678), "3:45");
    EXPECT_EQ(ClockText(225'078, true), "3:45.078");
    EXPECT_EQ(ClockText(3'825'000), "1:03:45");
    EXPECT_EQ(ClockText(-7), "0:00");
}

} // namespace
} // namespace tracksmith::song
