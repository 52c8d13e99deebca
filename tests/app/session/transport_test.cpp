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

} // namespace
} // namespace tracksmith::session
