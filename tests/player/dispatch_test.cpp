#include <algorithm>

#include "player_fixture.h"
#include "support/temporary_folder.h"

#include "player/chase.h"

namespace tracksmith::test {
namespace {

using DispatchTest = PlayerFixture;

/// Channel and system-exclusive messages of a song in the order of playing, "ms bytes".
std::vector<std::string> Expected(const song::Song& song) {
    std::vector<std::pair<std::int64_t, std::string>> events;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            Bytes bytes{event->status};
            if (event->kind == song::kShortMessage) {
                bytes.push_back(event->data1 & 0x7F);
                if (event->length > 2) {
                    bytes.push_back(event->data2 & 0x7F);
                }
            } else {
                Append(bytes, {event->Payload().begin(), event->Payload().end()});
            }
            if (event->status != song::kMeta) {
                events.emplace_back(event->timeMs, Hex(bytes));
            }
        }
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> list;
    for (const auto& [ms, bytes] : events) {
        list.push_back(std::to_string(ms * 1000) + " " + bytes);
    }
    return list;
}

class WholeSongTest : public PlayerFixture {
protected:
    // Every event comes at exactly its time and in the order of playing, whatever the tempo map.
    void ExpectEveryEventAtItsTime() {
        Play();
        Run(player->SongEndTime() + 4000);
        std::vector<std::string> played;
        for (const Received& message : log) {
            played.push_back(std::to_string(message.us) + " " + Hex(message.bytes));
        }
        // Behind the last event only the silence of the end.
        ASSERT_GE(played.size(), 32U);
        played.resize(played.size() - 32);
        EXPECT_EQ(played, Expected(decoded->song));
        EXPECT_FALSE(player->Playing());
    }
};

class RandomSongTest : public WholeSongTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(RandomSongTest, PlaysEveryEventAtItsTime) {
    Load(RandomFile(GetParam(), GetParam() % 2 == 0 ? 1 : 0, GetParam() % 3 == 0));
    ExpectEveryEventAtItsTime();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSongTest, ::testing::Range(1U, 41U));

TEST_F(WholeSongTest, PlaysTheDemoSong) {
    Load(FileBytes(std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "data/demo/demo.mid"));
    ExpectEveryEventAtItsTime();
}

// A thread that wakes up late sends late, but never early, in order, and nothing gets lost.
TEST_F(DispatchTest, LateWakeUpsKeepOrderAndAddNoDrift) {
    Load(RandomFile(7, 1));
    clock->latenessUs = 13'337;
    Play();
    Run(player->SongEndTime() + 4000);
    const std::vector<std::string> expected = Expected(decoded->song);
    ASSERT_EQ(log.size(), expected.size() + 32);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const std::size_t blank = expected[i].find(' ');
        EXPECT_EQ(Hex(log[i].bytes), expected[i].substr(blank + 1));
        const std::int64_t late = log[i].us - std::stoll(expected[i]);
        EXPECT_TRUE(late >= 0 && late <= clock->latenessUs + 1000) << late;
    }
}

// A day of music, begun after the stopwatch has run for a year.
TEST_F(DispatchTest, KeepsTimeForADay) {
    constexpr int kHours = 24;
    TrackBuilder track;
    for (int i = 0; i < kHours * 3600; ++i) {
        track.Note(500, 0, 60, 64).NoteOff(500, 0, 60);
    }
    Load(MillisecondFile().Track(track.End()));
    const std::int64_t start = 365LL * 86'400 * 1'000'000;
    clock->RunUntil(start);
    Play();
    Run(kHours * 3'600'000);
    ASSERT_EQ(log.size(), std::size_t{kHours} * 7200);
    for (std::size_t i = 0; i < log.size(); ++i) {
        ASSERT_EQ(log[i].us - start, (static_cast<std::int64_t>(i) + 1) * 500'000);
    }
    EXPECT_EQ(player->Position(), kHours * 3'600'000LL);
}

TEST_F(DispatchTest, EndsLaterThanTheLastEventAndStaysStopped) {
    Load(MillisecondFile().Track(TrackBuilder().Note(0, 0, 60, 64).End(1000)));
    Play();
    const std::int64_t end = player->SongEndTime();
    Run(end + 3300);
    EXPECT_TRUE(player->Playing());
    EXPECT_EQ(Log(), "0 903C40");
    Run(1);
    EXPECT_FALSE(player->Playing());
    EXPECT_EQ(player->ThreadState(), player::kStateStopped);
    EXPECT_EQ(Log(), std::to_string(end + 3301) + " silence");
    EXPECT_EQ(told, (std::vector{true, false}));
    // The next Play begins at the start.
    Run(50);
    Play();
    Run(1);
    EXPECT_EQ(Messages(), "903C40");
}

TEST_F(DispatchTest, SleepsWithoutWakingWhileStopped) {
    Load(MillisecondFile().Track(TrackBuilder().Note(0, 0, 60, 64).NoteOff(9000, 0, 60).End()));
    Run(1);
    const std::int64_t sleeps = clock->Sleeps();
    Run(3'600'000);
    EXPECT_EQ(clock->Sleeps(), sleeps);
    Play();
    Run(8000);
    // One pass for the first note, none until the next.
    EXPECT_LE(clock->Sleeps(), sleeps + 2);
}

TEST_F(DispatchTest, StopContinuesWithoutRepeating) {
    Load(MillisecondFile().Track(
        TrackBuilder().Note(10, 0, 60, 64).Note(10, 0, 61, 64).NoteOff(10, 0, 60).End()));
    Play();
    clock->RunUntil(10'400);
    EXPECT_TRUE(player->Stop());
    EXPECT_EQ(Log(), "10 903C40; 10 silence");
    EXPECT_EQ(player->Activity().Sounding(0, 60), 0U);
    EXPECT_EQ(player->Activity().Level(0), 0U);
    Run(1000);
    Play();
    Run(30);
    // The next event stood 9.6 ms ahead.
    EXPECT_EQ(Log(), "1020 903D40; 1030 803C40");
}

TEST_F(DispatchTest, ShiftedTracksPlayEarlierOrLater) {
    Load(MillisecondFile()
             .Track(TrackBuilder().Note(100, 0, 60, 64).End())
             .Track(TrackBuilder().Note(100, 1, 61, 64).End())
             .Track(TrackBuilder().Note(100, 2, 62, 64).End()));
    EXPECT_TRUE(player->SetTrackTimeShift(1, 30));
    EXPECT_TRUE(player->SetTrackTimeShift(2, -30));
    Play();
    Run(200);
    EXPECT_EQ(Log(), "70 913D40; 100 903C40; 130 923E40");
}

struct LoopCase {
    const char* name;
    std::int32_t from;
    std::int32_t to;
    const char* log;
};

class LoopTest : public PlayerFixture, public ::testing::WithParamInterface<LoopCase> {};

TEST_P(LoopTest, JumpsBackBeforeItsEnd) {
    Load(MillisecondFile().Track(TrackBuilder()
                                     .Note(0, 0, 60, 64)
                                     .Note(100, 0, 61, 64)
                                     .NoteOff(50, 0, 60)
                                     .Note(45, 0, 62, 64)
                                     .End(105)));
    EXPECT_TRUE(player->SetLoop(GetParam().from, GetParam().to));
    EXPECT_TRUE(player->SetLooping(true));
    Play();
    Run(320);
    EXPECT_EQ(Log(), GetParam().log);
    Stop();
}

INSTANTIATE_TEST_SUITE_P(
    Loops, LoopTest,
    ::testing::Values(
        LoopCase{"Forwards", 100, 200,
                 "0 903C40; 100 903D40; 150 803C40; 191 silence; 191 903D40; 241 803C40; "
                 "282 silence; 282 903D40"},
        LoopCase{"Backwards", 200, 100,
                 "0 903C40; 100 903D40; 150 803C40; 191 silence; 191 903D40; 241 803C40; "
                 "282 silence; 282 903D40"},
        LoopCase{"TooShort", 100, 110, "0 903C40; 100 903D40; 150 803C40; 195 903E40"}),
    [](const auto& loop) { return loop.param.name; });

TEST_F(DispatchTest, ALatePassPlaysNothingFromBehindTheLoop) {
    Load(MillisecondFile().Track(
        TrackBuilder().Note(0, 0, 60, 64).Note(200, 0, 61, 64).NoteOff(5, 0, 60).End(500)));
    EXPECT_TRUE(player->SetLoop(0, 200));
    EXPECT_TRUE(player->SetLooping(true));
    clock->latenessUs = 40'000;
    Play();
    Run(200);
    // Due at 191, 40 ms late.
    EXPECT_EQ(Log(), "0 903C40; 231 silence; 231 903C40");
    EXPECT_TRUE(player->SetLooping(false));
    Stop();
}

} // namespace
} // namespace tracksmith::test
