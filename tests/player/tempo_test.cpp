#include "player_fixture.h"

#include "song/song_position.h"

namespace tracksmith::test {
namespace {

using TempoTest = PlayerFixture;

std::vector<std::int32_t> Times(const song::Song& song) {
    std::vector<std::int32_t> times;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            times.push_back(event->timeMs);
        }
    }
    return times;
}

Bytes TwoTempos(std::uint32_t first, std::uint32_t second) {
    return MillisecondFile()
        .Track(TrackBuilder().Tempo(0, first).Tempo(2000, second).End())
        .Track(TrackBuilder().Note(1000, 0, 60, 64).NoteOff(3000, 0, 60).End(100))
        .Build();
}

class RetimeTest : public PlayerFixture, public ::testing::WithParamInterface<unsigned> {};

// However often the tempo is moved while playing, every event has the time that the song's tempo
// list gives, also after an edit has read the tempos anew from the events, and a return to 0 brings
// the file's tempos back.
TEST_P(RetimeTest, EqualsAFullRetiming) {
    Load(RandomFile(GetParam(), 1, true));
    const std::vector<std::int32_t> fileTimes = Times(decoded->song);
    Dice dice(GetParam());
    Play();
    for (int i = 0; i < 6; ++i) {
        Run(dice.Roll(300));
        EXPECT_TRUE(player->SetTempoOffset(dice.Roll(200) - 80));
        Run(1);
        const std::vector<std::int32_t> times = Times(decoded->song);
        Stop();
        song::SetTimeZones(decoded->song);
        song::SetTimePositions(decoded->song);
        EXPECT_EQ(Times(decoded->song), times);
        song::UpdateTimeZoneData(decoded->song);
        EXPECT_TRUE(player->RebuildAfterEdit());
        EXPECT_EQ(Times(decoded->song), times);
        Play();
    }
    Stop();
    EXPECT_TRUE(player->SetTempoOffset(0));
    EXPECT_EQ(Times(decoded->song), fileTimes);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RetimeTest, ::testing::Range(1U, 16U));

TEST_F(TempoTest, GoesOnFromTheSamePlace) {
    Load(TwoTempos(500'000, 250'000));
    Play();
    Run(500);
    EXPECT_TRUE(player->SetTempoOffset(120));
    // Half of the way to the note is left, at double speed.
    EXPECT_EQ(player->Position(), 250);
    Run(1000);
    EXPECT_EQ(Log(), "750 903C40");
    // The second tempo, from tick 2000 at 1000 ms on, went from 240 to 360.
    const player::PlayPlace place = player->Place();
    EXPECT_NEAR(static_cast<double>(song::MsToTick(*place.map, place.ms)), 2750, 4);
    EXPECT_TRUE(player->SetTempoOffset(0));
    const player::PlayPlace back = player->Place();
    EXPECT_NEAR(static_cast<double>(song::MsToTick(*back.map, back.ms)), 2750, 4);
    EXPECT_NEAR(static_cast<double>(back.ms), 2375, 1);
    Run(700);
    EXPECT_EQ(Log(), "2125 803C40");
}

// Even where a tick lasts a second, the place between two ticks is kept.
TEST_F(TempoTest, KeepsThePlaceWithinALongTick) {
    Load(MidiFileBuilder(1, 1).Track(TrackBuilder().Note(4, 0, 60, 64).NoteOff(4, 0, 60).End()));
    Play();
    Run(1800);
    EXPECT_TRUE(player->SetTempoOffset(120));
    Run(100);
    EXPECT_EQ(Log(), "1900 903C40");
}

TEST_F(TempoTest, LoopFollowsTheTempo) {
    Load(MillisecondFile().Track(TrackBuilder().Note(0, 0, 60, 64).NoteOff(1000, 0, 60).End(99)));
    EXPECT_TRUE(player->SetLoop(0, 400));
    EXPECT_TRUE(player->SetLooping(true));
    Play();
    EXPECT_TRUE(player->SetTempoOffset(120));
    Run(200);
    EXPECT_EQ(Log(), "0 903C40; 191 silence; 191 903C40");
    Stop();
}

} // namespace
} // namespace tracksmith::test
