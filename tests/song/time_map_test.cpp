#include "song/time_map.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "support/song_assert.h"

#include "song/song_position.h"

namespace tracksmith::song {
namespace {

using namespace test;

/// A song of a conductor track and a track whose last note stands at `lastTick`.
Bytes Conducted(const TrackBuilder& conductor, std::uint64_t lastTick, int division = 480) {
    return MidiFileBuilder(1, division)
        .Track(TrackBuilder(conductor).End())
        .Track(TrackBuilder().Note(lastTick, 0, 60, 1).End())
        .Build();
}

/// "tick:measure.beat.beatTick tempo numerator/denominator startMs" of every zone before the
/// closing one.
std::vector<std::string> Zones(const Song& song) {
    std::vector<std::string> rows;
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(song.timeZoneCount); ++i) {
        const TimeZoneEntry& zone = song.timeZones[i];
        rows.push_back(std::to_string(zone.tick) + ":" + std::to_string(zone.measure) + "." +
                       std::to_string(zone.beat) + "." + std::to_string(zone.beatTick) + " " +
                       std::to_string(zone.tempo) + " " + std::to_string(zone.numerator) + "/" +
                       std::to_string(zone.denominator) + " " + std::to_string(zone.startMs));
    }
    return rows;
}

struct MapRow {
    const char* name;
    TrackBuilder conductor;
    std::vector<std::string> zones;
};

class ZonesTest : public testing::TestWithParam<MapRow> {};

TEST_P(ZonesTest, AreMergedAndPlaced) {
    DecodedSong decoded(Conducted(GetParam().conductor, 9000));
    const Song& song = decoded.Timed().song;
    EXPECT_EQ(Zones(song), GetParam().zones);
    const TimeZoneEntry& closing = song.timeZones[static_cast<std::size_t>(song.timeZoneCount) - 1];
    EXPECT_EQ(closing.tick, song.songLength + 1);
    EXPECT_EQ(closing.tempo, song.timeZones[GetParam().zones.size() - 1].tempo);
}

using Rows = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(
    Maps, ZonesTest,
    testing::Values(MapRow{"Empty", TrackBuilder(), Rows{"0:1.1.0 500000 4/4 0"}},
                    MapRow{"SameTick", TrackBuilder().Tempo(0, 400'000).TimeSignature(0, 3, 2),
                           Rows{"0:1.1.0 400000 3/4 0"}},
                    MapRow{"SameTickLater",
                           TrackBuilder().TimeSignature(1920, 3, 2).Tempo(0, 250'000),
                           Rows{"0:1.1.0 500000 4/4 0", "1920:2.1.0 250000 3/4 2000"}},
                    MapRow{"InTurns",
                           TrackBuilder()
                               .TimeSignature(0, 3, 2)
                               .Tempo(720, 1'000'000)
                               .TimeSignature(720, 2, 2)
                               .Tempo(100, 96),
                           Rows{"0:1.1.0 500000 3/4 0", "720:1.2.240 1000000 3/4 750",
                                "1440:2.1.0 1000000 2/4 2250", "1540:2.1.100 96 2/4 2458"}},
                    MapRow{"SixEight", TrackBuilder().TimeSignature(0, 6, 3).Tempo(1450, 250'000),
                           Rows{"0:1.1.0 500000 6/8 0", "1450:2.1.10 250000 6/8 1510"}},
                    MapRow{"ThreeSixteenInsideABeat",
                           TrackBuilder().TimeSignature(400, 3, 4).Tempo(100, 500'000),
                           Rows{"0:1.1.0 500000 4/4 0", "400:1.1.400 500000 3/16 417",
                                "500:1.2.20 500000 3/16 521"}},
                    MapRow{"HalvesBecomeQuarters",
                           TrackBuilder().TimeSignature(0, 2, 1).TimeSignature(1920, 3, 1),
                           Rows{"0:1.1.0 500000 4/4 0", "1920:2.1.0 500000 6/4 2000"}},
                    MapRow{"ShortestBeat", TrackBuilder().TimeSignature(0, 3, 7),
                           Rows{"0:1.1.0 500000 3/128 0"}},
                    MapRow{"HugeHalves", TrackBuilder().TimeSignature(0, 200, 1),
                           Rows{"0:1.1.0 500000 255/4 0"}},
                    MapRow{"NoNumeratorAndHugeExponent", TrackBuilder().TimeSignature(0, 0, 200),
                           Rows{"0:1.1.0 500000 4/4 0"}},
                    MapRow{"TempoZero", TrackBuilder().Tempo(0, 1'000'000).Tempo(480, 0),
                           Rows{"0:1.1.0 1000000 4/4 0", "480:1.2.0 500000 4/4 1000"}},
                    MapRow{"BehindTheEnd", TrackBuilder().Tempo(0, 400'000).Tempo(9011, 96),
                           Rows{"0:1.1.0 400000 4/4 0"}},
                    MapRow{"AtTheEnd", TrackBuilder().Tempo(0, 400'000).Tempo(9010, 480),
                           Rows{"0:1.1.0 400000 4/4 0", "9010:5.3.370 480 4/4 7508"}}),
    [](const auto& row) { return std::string(row.param.name); });

// Playing goes on to a tempo that stands behind the end, and no further.
TEST(TimeMap, TheLargestTimeIsThatOfTheLastEvent) {
    DecodedSong decoded(Conducted(TrackBuilder().Tempo(0, 480'000).Tempo(2'000, 480'000), 1'500));
    EXPECT_EQ(LargestTime(decoded.Timed().song), 2'000);
    DecodedSong ended(Conducted(TrackBuilder().Tempo(0, 480'000).Tempo(500, 480'000), 1'500));
    EXPECT_EQ(LargestTime(ended.Timed().song), ended.song.songLength);
}

TEST(TimeMap, DefaultsInFrontHave36Clocks) {
    DecodedSong none(Conducted(TrackBuilder(), 100));
    EXPECT_EQ(none.Timed().song.timeSignatures[0].clocksPerClick, 36);
    DecodedSong later(Conducted(TrackBuilder().TimeSignature(960, 3, 2).Tempo(0, 400'000), 2000));
    const Song& song = later.Timed().song;
    EXPECT_EQ(song.timeSignatures[0].clocksPerClick, 36);
    EXPECT_EQ(song.timeSignatures[0].tick, 0);
    EXPECT_EQ(song.timeSignatures[1].clocksPerClick, 24);
    EXPECT_EQ(song.timeSignatureCount, 3);
    EXPECT_EQ(song.tempoCount, 3);
    EXPECT_EQ(song.tempos[0].tempo, 500'000);
    EXPECT_EQ(song.tempos[2].tick, song.songLength + 1);
    EXPECT_EQ(song.tempos[2].tempo, 400'000);
}

TEST(TimeMap, ZoneFieldsFollowTheTempo) {
    DecodedSong decoded(Conducted(TrackBuilder().Tempo(0, 333'333).TimeSignature(0, 6, 3), 100));
    const TimeZoneEntry& zone = decoded.Timed().song.timeZones[0];
    EXPECT_EQ(zone.bpm, 180);
    EXPECT_EQ(zone.usPerBeat, 166'666);
    EXPECT_FLOAT_EQ(zone.msPerTick, 333.333F / 480);
    EXPECT_EQ(BpmOfTempo(1), 65'535);
    EXPECT_EQ(BpmOfTempo(0xFFFFFF), 4);
    EXPECT_EQ(BpmOfTempo(0), 120);
}

TEST(TimeMap, EventsOfOtherTracksCountAfterReloadingInTrackOrder) {
    DecodedSong decoded(MidiFileBuilder()
                            .Track(TrackBuilder().Tempo(960, 400'000).End())
                            .Track(TrackBuilder().Tempo(0, 300'000).TimeSignature(480, 3, 2).End())
                            .Track(TrackBuilder().Note(4000, 0, 60, 1).End())
                            .Build());
    Song& song = decoded.song;
    CompleteTempoTimeSign(song);
    SetTimeZones(song);
    EXPECT_EQ(Zones(song), (Rows{"0:1.1.0 500000 4/4 0", "960:1.3.0 400000 4/4 1000"}));
    ReloadTempoTimeSign(song);
    EXPECT_EQ(song.tempos[0].tick, 960); // not sorted
    EXPECT_EQ(song.tempos[1].tick, 0);
    UpdateTimeZoneData(song);
    const Rows zones = Zones(song);
    EXPECT_EQ(zones.at(zones.size() - 3), "0:1.1.0 300000 4/4 0");
    EXPECT_EQ(zones.back(), "960:1.3.0 400000 3/4 600");
    EXPECT_EQ(song.tracks[2].last->prev->timeMs, 600 + 2533); // 3040 ticks at 0.8333 ms
}

struct EndRow {
    int division;
    std::uint64_t lastTick;
    const char* text;
    int width;
    int ms;
};

class SongEndTest : public testing::TestWithParam<EndRow> {};

TEST_P(SongEndTest, IsDescribedInMusicalTerms) {
    DecodedSong decoded(Conducted(TrackBuilder(), GetParam().lastTick, GetParam().division));
    const Song& song = decoded.Timed().song;
    EXPECT_EQ(song.lengthText, GetParam().text);
    EXPECT_EQ(song.positionWidth, GetParam().width);
    EXPECT_EQ(song.lengthMs, GetParam().ms);
    EXPECT_EQ(SongPositionToMTC(song, song.songLength).size(),
              static_cast<std::size_t>(GetParam().width));
}

INSTANTIATE_TEST_SUITE_P(Songs, SongEndTest,
                         testing::Values(EndRow{480, 22'075, "1203005", 10, 23'005},
                                         EndRow{96, 374, "30339", 9, 5'203},
                                         EndRow{480, 999 * 1920 - 10, "100001000", 11, 1'998'000},
                                         EndRow{480, 999 * 1920 - 11, "99904479", 10, 1'997'999},
                                         EndRow{10'000, 12'335, "10202345", 12, 617},
                                         EndRow{1, 989, "250040", 8, 499'500}));

TEST(TimeMap, LengthFieldsAgreeWithThePositionOfTheEnd) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        DecodedSong decoded(RandomFile(seed, 1));
        const Song& song = decoded.Timed().song;
        const MeasureBeatTick end = GetMeasureBeatFromSongPos(song, song.songLength);
        const TimeZoneEntry& zone = song.timeZones[ZoneOfTick(song, song.songLength)];
        if (zone.tick < song.songLength) { // else the zone before holds up to the end
            EXPECT_EQ(song.lengthMs, TickToMs(song, song.songLength)) << seed;
            EXPECT_EQ((MeasureBeatTick{song.lengthMeasure, song.lengthBeat, song.lengthTick}), end)
                << seed;
        }
    }
}

TEST(TimeMap, HalfMillisecondsAreRoundedToEven) {
    DecodedSong decoded(Conducted(TrackBuilder().Tempo(5, 500'000), 100, 1000)); // 0.5 ms a tick
    const Song& song = decoded.Timed().song;
    EXPECT_EQ(TickToMs(song, 1), 0);
    EXPECT_EQ(TickToMs(song, 3), 2);
    EXPECT_EQ(song.timeZones[1].startMs, 2);
    EXPECT_EQ(song.tracks[0].last->prev->timeMs, 2);
}

TEST(TimeMap, DivisionZeroIsCalculatedAsOne) {
    DecodedSong decoded(Conducted(TrackBuilder().TimeSignature(0, 6, 3), 100, 0));
    const Song& song = decoded.Timed().song;
    EXPECT_EQ(song.division, 0);
    EXPECT_FLOAT_EQ(song.timeZones[0].msPerTick, 500);
    EXPECT_EQ(song.lengthMs, 499'500);
    EXPECT_EQ(song.divisionDigits, 1);
    EXPECT_EQ(GetMeasureBeatFromSongPos(song, 6), (MeasureBeatTick{2, 1, 0}));
}

TEST(TimeMap, HugeTimesAreHeldAtTheLargestValue) {
    constexpr std::uint64_t kMostTick = (1ULL << 31) - 65'536;
    DecodedSong decoded(Conducted(
        TrackBuilder().Tempo(0, 0xFFFFFF).TimeSignature(7, 1, 7).Tempo(kMostTick / 2, 0xFFFFFF),
        kMostTick, 1));
    const Song& song = decoded.Timed().song;
    EXPECT_EQ(song.lengthMs, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(song.tracks[1].last->timeMs, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(song.tracks[1].first->timeMs, 0);
    EXPECT_GE(song.lengthMeasure, 1);
    EXPECT_GE(MsToTick(song, std::numeric_limits<std::int32_t>::max() - 1LL), 100'000);
}

TEST(TimeMap, ZoneStartsAreOneRunningSum) {
    TrackBuilder conductor;
    for (int i = 0; i < 3000; ++i) {
        conductor.Tempo(7, static_cast<std::uint32_t>(300'000 + 777 * (i % 500)));
    }
    DecodedSong decoded(Conducted(conductor, 30'000));
    const Song& song = decoded.Timed().song;
    ASSERT_EQ(song.timeZoneCount, 3002);
    double sum = 0;
    for (std::size_t k = 1; k < 3001; ++k) {
        const TimeZoneEntry& before = song.timeZones[k - 1];
        sum += (song.timeZones[k].tick - before.tick) * static_cast<double>(before.msPerTick);
        ASSERT_EQ(song.timeZones[k].startMs, std::lrint(sum)) << k;
    }
}

TEST(TimeMap, UpdateTimeZonesFollowsALongerSong) {
    DecodedSong decoded(
        Conducted(TrackBuilder().Tempo(0, 400'000).TimeSignature(1920, 3, 2), 5000));
    Song& song = decoded.Timed().song;
    const Rows zones = Zones(song);
    song.songLength = 200'000;
    for (Track& track : song.tracks) {
        track.last->tick = song.songLength;
    }
    UpdateTimeZones(song);
    SetTimePositions(song);
    EXPECT_EQ(CheckSong(song), "");
    EXPECT_EQ(Zones(song), zones);
    EXPECT_EQ(song.timeZones[static_cast<std::size_t>(song.timeZoneCount) - 1].tick, 200'001);
    EXPECT_EQ(song.lengthMs, 166'667);
    EXPECT_EQ(song.tracks[0].last->timeMs, 166'667);
    EXPECT_EQ(MTCToSongPosition(song, 101, 1, 0), 1920 + 99 * 1440);
    DecodedSong fresh(
        Conducted(TrackBuilder().Tempo(0, 400'000).TimeSignature(1920, 3, 2), 199'990));
    EXPECT_EQ(fresh.Timed().song.lengthText, song.lengthText);
}

std::vector<std::int32_t> Times(const Song& song) {
    std::vector<std::int32_t> times;
    for (const Track& track : song.tracks) {
        for (ConstEventLink event = track.first; event; event = event->next) {
            times.push_back(event->timeMs);
        }
    }
    return times;
}

// Neither changes that crowd at one tick nor tracks that begin behind many changes may cost more
// than their number: squared, these would take minutes.
TEST(TimeMap, FloodsOfChangesAreLoadedAndTimed) {
    TrackBuilder conductor;
    for (std::uint32_t i = 0; i < 100'000; ++i) {
        conductor.Tempo(i == 0 ? 5 : 0, 300'000 + i)
            .TimeSignature(0, 1 + static_cast<int>(i % 9), 2);
    }
    for (std::uint32_t i = 0; i < 100'000; ++i) {
        conductor.Tempo(1, 300'000 + i);
    }
    MidiFileBuilder file;
    file.Track(conductor.End());
    const Bytes late = TrackBuilder().Note(150'000, 0, 60, 1).End().Chunk();
    for (int i = 0; i < 20'000; ++i) {
        file.Loose(late);
    }
    DecodedSong decoded(file.Promise(20'001).Build());
    Song& song = decoded.song;
    EXPECT_TRUE(decoded.result.timesAreSet);
    const std::int32_t loaded = song.tracks[20'000].last->prev->timeMs;
    decoded.Timed();
    EXPECT_EQ(song.timeZoneCount, 200'002);
    EXPECT_EQ(song.tracks[20'000].last->prev->timeMs, loaded);
    EXPECT_EQ(TickToMs(song, 150'000), loaded);
    EXPECT_EQ(song.tracks[0].first->next->timeMs, 5);
}

struct LoadRow {
    const char* name;
    int format;
    bool scattered;
    bool split;
};

class LoadedTimesTest : public testing::TestWithParam<LoadRow> {};

// The decoder may set the clock times itself; they must be those of the finished map.
TEST_P(LoadedTimesTest, AreThoseOfTheMap) {
    int setByDecoder = 0;
    for (unsigned seed = 0; seed < 150; ++seed) {
        DecodeOptions options;
        options.splitFormat0 = GetParam().split;
        DecodedSong decoded(RandomFile(seed, GetParam().format, GetParam().scattered), options);
        Song& song = decoded.song;
        decoded.result.tempoMapInFirstTrack ? CompleteTempoTimeSign(song)
                                            : ReloadTempoTimeSign(song);
        SetTimeZones(song);
        const std::vector<std::int32_t> times = Times(song);
        SetTimePositions(song);
        if (decoded.result.timesAreSet) {
            ++setByDecoder;
            ASSERT_EQ(times, Times(song)) << "seed " << seed;
        }
        const Rows zones = Zones(song);
        decoded.Timed();
        ASSERT_EQ(Zones(song), zones) << "seed " << seed;
        for (const Track& track : song.tracks) {
            for (ConstEventLink event = track.first; event; event = event->next) {
                ASSERT_EQ(event->timeMs, TickToMs(song, event->tick)) << "seed " << seed;
            }
        }
    }
    // Where the decoder can set them it must, or loading takes a second walk over the song.
    EXPECT_TRUE(setByDecoder > 100 || GetParam().split || GetParam().scattered) << setByDecoder;
}

INSTANTIATE_TEST_SUITE_P(Files, LoadedTimesTest,
                         testing::Values(LoadRow{"Conductor", 1, false, false},
                                         LoadRow{"Scattered", 1, true, false},
                                         LoadRow{"Format0", 0, false, false},
                                         LoadRow{"Split", 0, false, true}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace tracksmith::song
