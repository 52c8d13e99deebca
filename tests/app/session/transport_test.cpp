#include "app/session/transport.h"

#include "app/session/session_fixture.h"

namespace tracksmith::session {
namespace {

using namespace test;

class TransportTest : public SessionFixture {};

TEST_F(TransportTest, WithoutASongEveryControlIsSafe) {
    Transport& controls = session.Controls();
    controls.TogglePlay();
    controls.MoveByMeasures(3);
    controls.MoveToEnd();
    controls.LoopFromHere();
    controls.LoopToHere();
    controls.SetLooping(true);
    controls.SetBpm(90);
    controls.SetTempoPercent(50);
    controls.Panic();
    EXPECT_FALSE(controls.Playing());
    EXPECT_EQ(controls.Tick(), 0);
    EXPECT_FALSE(controls.Loop());
    EXPECT_FALSE(session.Modified());
    EXPECT_TRUE(host.messages.size() <= 1) << host.messages[1];
}

// Two ticks stand in one millisecond's place; the place that was asked for stays.
TEST_F(TransportTest, MovesByMeasuresAndStaysWhereItWasPut) {
    Open(ThreeNotes());
    Transport& controls = session.Controls();
    controls.MoveToTick(700);
    controls.MoveByMeasures(-1); // inside the first measure: to its start
    EXPECT_EQ(controls.Tick(), 0);
    controls.MoveToTick(2'000);
    controls.MoveToTick(2'000 + 700);
    EXPECT_EQ(controls.Tick(), 2'000); // behind the end: nothing happens
    controls.MoveByMeasures(-1);
    EXPECT_EQ(controls.Tick(), 0);
}

TEST_F(TransportTest, PlayAtTheEndBeginsAgain) {
    Open(ThreeNotes());
    session.Controls().MoveToEnd();
    session.Controls().Play();
    EXPECT_EQ(Hear(10), std::vector{60});
}

TEST_F(TransportTest, AnotherSongHasNoLoopNoTempoAndBeginsAtTheStart) {
    Open(ThreeNotes());
    session.Controls().SetLoop(0, 1'000);
    session.Controls().SetBpm(60);
    session.Controls().MoveToTick(500);
    session.Controls().Play();
    Open(ThreeNotes(70));
    EXPECT_FALSE(session.Controls().Playing());
    EXPECT_FALSE(session.Controls().Loop());
    EXPECT_EQ(session.Controls().Bpm(), 120);
    EXPECT_EQ(session.Controls().Tick(), 0);
    AwaitSending();
    driver.Take();
    session.Controls().Play();
    EXPECT_EQ(Hear(2'500), (std::vector{70, 70, 70}));
}

TEST_F(TransportTest, TemposAreClampedOnce) {
    Open(ThreeNotes());
    session.Controls().SetBpm(3);
    EXPECT_EQ(session.Controls().Bpm(), 25);
    session.Controls().SetBpm(200);
    EXPECT_EQ(session.Controls().Bpm(), 200);
    session.Controls().SetTempoPercent(1'000'000);
    EXPECT_GT(session.Controls().Bpm(), 65'000); // as near as whole microseconds allow
}

// Edits are refused meanwhile; places, loop and practice tempo stay those of the song in memory.
TEST_F(TransportTest, AnotherStateOfTheSongIsHeardAndNothingIsChanged) {
    Open(ThreeNotes());
    const Bytes before = Saved();
    const auto other = std::make_shared<OtherSong>();
    Workspace work;
    Decode(work, ThreeNotes(72));
    other->song.Swap(work.song);
    other->places = song::PlaceMap({{0, 1'000, 0}, {1'500, 5'000, -500}}); // 500 ticks were cut
    Transport& controls = session.Controls();
    controls.SetLoop(1'200, 2'000);
    controls.SetLooping(false);
    controls.MoveToTick(500);
    controls.Play();
    EXPECT_EQ(Hear(10), std::vector<int>{});
    ASSERT_TRUE(controls.Hear(other));
    EXPECT_EQ(controls.Tick(), 510);
    EXPECT_EQ(Hear(1'200), std::vector<int>{72}); // at 1,710 of the other one
    EXPECT_EQ(controls.Tick(), 1'210);
    EXPECT_EQ(controls.Player().Loop().startTick, 1'700);
    EXPECT_THROW(ChangeWhole(), EMidiError);
    EXPECT_NE(host.messages.back().find("Ctrl+B"), std::string::npos);
    EXPECT_EQ(session.Revision(), 1U);
    EXPECT_TRUE(controls.Playing());
    controls.SetTempoPercent(50);
    EXPECT_EQ(controls.Bpm(), 60);
    ASSERT_TRUE(controls.Hear(nullptr));
    EXPECT_EQ(controls.Tick(), 1'210);
    EXPECT_EQ(controls.Bpm(), 60);
    EXPECT_EQ(Hear(1'700), std::vector<int>{60});
    controls.ResetTempo();
    EXPECT_EQ(Saved(), before);
    EXPECT_FALSE(session.Modified());
    ASSERT_TRUE(controls.Hear(other));
    Open(ThreeNotes(80)); // is made, and heard
    EXPECT_FALSE(session.HearsOther());
    AwaitSending();
    driver.Take();
    controls.Play();
    EXPECT_EQ(Hear(50), std::vector<int>{80});
    controls.Hear(other);
    EXPECT_TRUE(controls.Playing());
}

} // namespace
} // namespace tracksmith::session
