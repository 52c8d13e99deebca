#include "app/session/transport.h"

#include <functional>

#include "app/session/session_fixture.h"

namespace tracksmith::session {
namespace {

using namespace test;

class TransportTest : public SessionFixture {
protected:
    /// Eight measures of 2,000 ticks.
    void OpenLong() {
        Open(MidiFileBuilder(1, 500)
                 .Track(TrackBuilder().Tempo(0, 500'000).End())
                 .Track(TrackBuilder().Note(15'000, 0, 60, 9).NoteOff(900, 0, 60).End())
                 .Build());
    }
    /// The loop as it is shown and as it is played, "500-900 on".
    std::string LoopText() {
        const auto& loop = session.Controls().Loop();
        const player::PlayLoop& played = session.Controls().Player().Loop();
        EXPECT_EQ(played.on, loop && loop->on);
        if (!loop) {
            return "none";
        }
        EXPECT_EQ(played.startTick, loop->startTick);
        EXPECT_EQ(played.endTick, loop->endTick);
        return std::to_string(loop->startTick) + "-" + std::to_string(loop->endTick) +
               (loop->on ? " on" : " off");
    }

    void OnLoop() override { changes += "loop "; }
    void OnTempo() override { changes += "tempo "; }
    void OnPlace() override { changes += "place "; }
    void OnRoutes() override { changes += "routes "; }
    void OnPorts() override { changes += "ports "; }
    void OnFileState() override { changes += "file "; }

    std::string changes;
};

TEST_F(TransportTest, MovesToMeasuresAndToBothEnds) {
    OpenLong();
    Transport& controls = session.Controls();
    const auto moved = [&](std::int32_t from, int measures) {
        controls.MoveToTick(from);
        controls.MoveByMeasures(measures);
        return controls.Tick();
    };
    EXPECT_EQ(moved(700, 1), 2'000);
    EXPECT_EQ(moved(4'000, 2), 8'000);
    EXPECT_EQ(moved(4'600, -1), 4'000);
    EXPECT_EQ(moved(4'100, -1), 2'000); // still on the first beat
    EXPECT_EQ(moved(2'500, -3), 0);
    EXPECT_EQ(moved(15'000, 1), 15'000);
    controls.MoveToEnd();
    EXPECT_EQ(controls.Tick(), session.Song().songLength);
    controls.MoveToStart();
    EXPECT_EQ(controls.Tick(), 0);
    controls.MoveToTick(-5);
    EXPECT_EQ(controls.Tick(), 0);
}

TEST_F(TransportTest, LoopEndsAreSetFromThePlace) {
    OpenLong();
    Transport& controls = session.Controls();
    const auto at = [&](std::int32_t tick, void (Transport::*set)()) {
        controls.MoveToTick(tick);
        (controls.*set)();
        return LoopText();
    };
    EXPECT_EQ(at(500, &Transport::LoopFromHere), "500-15910 on");
    EXPECT_EQ(at(1'500, &Transport::LoopToHere), "500-1500 on");
    EXPECT_EQ(at(700, &Transport::LoopFromHere), "700-1500 on");
    EXPECT_EQ(at(700, &Transport::LoopToHere), "0-700 on"); // not of no length
    EXPECT_EQ(at(700, &Transport::LoopFromHere), "700-15910 on");
    controls.SetLooping(false);
    EXPECT_EQ(LoopText(), "700-15910 off");
    controls.SetLoop(900, 800);
    EXPECT_EQ(LoopText(), "800-900 on");
    controls.SetLoop(5, 5);
    EXPECT_EQ(LoopText(), "800-900 on");
    controls.TakeLoop(Transport::LoopRange{1, 900, false});
    EXPECT_EQ(LoopText(), "1-900 off");
    controls.TakeLoop({});
    EXPECT_EQ(LoopText(), "none");
    controls.SetLooping(true);
    EXPECT_EQ(LoopText(), "0-15910 on");
}

TEST_F(TransportTest, WhateverChangesIsTold) {
    OpenLong();
    Transport& controls = session.Controls();
    const auto changesBy = [&](const std::function<void()>& act) {
        changes.clear();
        act();
        return changes;
    };
    EXPECT_EQ(changesBy([&] { controls.MoveToTick(700); }), "place ");
    EXPECT_EQ(changesBy([&] { controls.SetLoop(0, 1'000); }), "loop ");
    EXPECT_EQ(changesBy([&] { controls.SetLooping(false); }), "loop ");
    EXPECT_EQ(changesBy([&] { controls.TakeLoop({}); }), "loop loop ");
    EXPECT_EQ(changesBy([&] { controls.SetBpm(60); }), "tempo file ");
    EXPECT_EQ(controls.TempoPercent(), 50);
    EXPECT_EQ(changesBy([&] { controls.SetBpm(60); }), "");
    EXPECT_EQ(changesBy([&] { controls.SetRoute(3, {"", 4}); }), "routes ");
    EXPECT_EQ(changesBy([&] { controls.ResetRoutes(); }), "routes ");
    EXPECT_EQ(changesBy([&] { controls.ChooseOutput("Keyboard"); }), "ports ");
    EXPECT_EQ(changesBy([&] { controls.Play(); }), "place ports ");
    EXPECT_EQ(changesBy([&] { controls.TogglePlay(); }), "place ");
    EXPECT_FALSE(controls.Playing());
    EXPECT_EQ(changesBy([&] { session.MarkSaved("a.mid", SaveFormat::AsSong); }), "tempo file ");
    EXPECT_EQ(changesBy([&] { Open(ThreeNotes()); }), "loop tempo place file ");
    driver.Add("Module");
    EXPECT_EQ(changesBy([&] { controls.CheckPorts(); }), "ports ");
}

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

/// A session with a keyboard and the built-in instrument.
class SynthTest : public testing::Test {
protected:
    SynthTest() {
        auto stopwatch = std::make_unique<FakeStopwatch>();
        session.StartPlayer({{{&keyboard, false}, {&synth, true}}, nullptr, "", host},
                            &settings.Store(), std::move(stopwatch));
    }

    ScratchSettings settings;
    RecordingMessageHost host;
    RecordingDriver keyboard;
    RecordingDriver synth{{"Built-in"}};
    Session session;
};

TEST_F(SynthTest, OnlyTheSynthIsOpenedAgainForItsOptions) {
    Transport& controls = session.Controls();
    controls.ChooseOutput("Keyboard");
    EXPECT_FALSE(controls.PlaysOnSynth());
    controls.ChooseOutput("Built-in");
    EXPECT_TRUE(controls.PlaysOnSynth());
    controls.ReopenSynth();
    EXPECT_EQ(synth.Openings("Built-in"), 2);
    EXPECT_EQ(keyboard.Openings("Keyboard"), 1);
}

} // namespace
} // namespace tracksmith::session
