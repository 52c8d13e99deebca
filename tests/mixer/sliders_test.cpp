#include "mixer/mixer_fixture.h"

namespace tracksmith::mixer {
namespace {

using test::Bytes;
using test::TrackBuilder;

class SlidersTest : public test::MixerFixture {};

struct Family {
    void (Mixer::*change)(std::size_t, double);
    std::uint8_t controller;
};

TEST_F(SlidersTest, EveryFamilyIsHeardAndWritten) {
    constexpr Family kFamilies[]{
        {&Mixer::TB_Volume00Change, 7},      {&Mixer::TB_PanoramaChange, 10},
        {&Mixer::TB_ExpressionChange, 11},   {&Mixer::TB_ReverbChange, 91},
        {&Mixer::TB_ChorusChange, 93},       {&Mixer::TB_Controller71Change, 71},
        {&Mixer::TB_Controller72Change, 72}, {&Mixer::TB_Controller73Change, 73},
        {&Mixer::TB_Controller74Change, 74}, {&Mixer::TB_Controller94Change, 94}};
    for (const auto& [change, controller] : kFamilies) {
        Open(FileOf({TrackBuilder()
                         .Short(0, 0xB4, controller, 5)
                         .Short(500, 0xB4, controller, 6)
                         .Note(400, 4, 60, 90)
                         .NoteOff(10, 4, 60)
                         .End()}));
        Play();
        Run(50);
        (mixer.*change)(4, 33.4);
        EXPECT_EQ(TakeAll(), (Messages{{0xB4, controller, 33}})) << int{controller};
        EXPECT_TRUE(session.Modified());
        EXPECT_EQ(int{session.Song().tracks[1].first->next->data2}, 33);
        (mixer.*change)(3, 44); // the song has nothing of this channel
        EXPECT_EQ(TakeAll(), Messages());
        Stop();
    }
}

TEST_F(SlidersTest, NoSongNoMove) {
    mixer.TB_Volume00Change(0, 9);
    mixer.SetMasterLinked(true);
    mixer.TB_MasterVolChange(9);
    EXPECT_EQ(int{mixer.State(0, Control::Volume).value}, 100);
    EXPECT_FALSE(session.Modified());
    EXPECT_EQ(mixer.Btn_Mute00MouseDown(0, false), LampResult::NoSong);
}

/// Pan events at 100 and 600; the first at a place where some song begins late.
Bytes LatePan() {
    return test::MidiFileBuilder(1, 500)
        .Track(TrackBuilder().Tempo(0, 500'000).End())
        .Track(TrackBuilder()
                   .Short(100, 0xB0, 10, 20)
                   .Short(500, 0xB0, 10, 80)
                   .Note(400, 0, 60, 90)
                   .NoteOff(10, 0, 60)
                   .End())
        .Build();
}

TEST_F(SlidersTest, TheEventInEffectAtThePlaceIsChanged) {
    struct Case {
        std::int32_t tick;
        int first, second;
        bool inEffect;
        int shown;
    };
    for (const Case& each : {Case{0, 64, 80, true, 20}, Case{50, 20, 80, false, 20},
                             Case{300, 64, 80, true, 20}, Case{800, 20, 64, true, 80}}) {
        Open(LatePan());
        Seek(each.tick);
        const ControlState state = mixer.State(0, Control::Pan);
        EXPECT_EQ(int{state.value}, each.shown) << each.tick;
        EXPECT_EQ(state.inEffect, each.inEffect) << each.tick;
        EXPECT_FALSE(state.Hollow());
        mixer.TB_PanoramaChange(0, 64);
        EXPECT_EQ(int{mixer.State(0, Control::Pan).value}, 64);
        const auto places = mixer.Index().Places(0, Control::Pan);
        EXPECT_EQ(int{places[0].event->data2}, each.first) << each.tick;
        EXPECT_EQ(int{places[1].event->data2}, each.second) << each.tick;
        EXPECT_EQ(session.Modified(), each.inEffect) << each.tick;
    }
    EXPECT_TRUE(mixer.State(0, Control::Volume).Hollow());
}

TEST_F(SlidersTest, ThePlaceMovesOnWhilePlayingAndInLoops) {
    Open(LatePan());
    session.Controls().SetLoop(300, 700);
    Seek(300);
    Play();
    for (const int shown : {20, 80, 20}) { // behind the first, the second, the jump back
        mixer.Refresh();
        EXPECT_EQ(int{mixer.State(0, Control::Pan).value}, shown);
        Run(shown == 20 ? 350 : 80);
    }
}

TEST_F(SlidersTest, WhatMovesWhileStoppedIsHeardAtPlayOrAtOnceByChoice) {
    Open(LatePan());
    Seek(300);
    mixer.TB_PanoramaChange(0, 1);
    EXPECT_EQ(TakeAll(), Messages());
    EXPECT_EQ(mixer.Live().Pending(0, Control::Pan), 1);
    EXPECT_TRUE(session.Controls().Play());
    EXPECT_TRUE(Has(Run(5), {0xB0, 10, 1}));
    EXPECT_FALSE(mixer.Live().Pending(0, Control::Pan));
    Stop();
    mixer.TB_PanoramaChange(0, 2);
    mixer.Live().SetLiveWhileStopped(true);
    EXPECT_TRUE(Has(TakeAll(), {0xB0, 10, 2})); // what was pending
    Run(20);
    mixer.Live().SetDrumEditor(0);
    mixer.TB_PanoramaChange(0, 3);
    EXPECT_EQ(TakeAll(), (Messages{{0xB9, 10, 3}}));
}

TEST_F(SlidersTest, OneMessageInTenMillisecondsAndTheLastAlways) {
    Open(LatePan());
    Seek(300);
    Play();
    for (int value = 0; value < 50; ++value) {
        mixer.TB_PanoramaChange(0, value);
    }
    EXPECT_EQ(TakeAll(), (Messages{{0xB0, 10, 0}}));
    EXPECT_TRUE(mixer.Waiting());
    Run(9);
    mixer.Flush();
    EXPECT_EQ(TakeAll(), Messages());
    Run(1);
    mixer.Flush();
    EXPECT_EQ(TakeAll(), (Messages{{0xB0, 10, 49}}));
    EXPECT_FALSE(mixer.Waiting());
}

TEST_F(SlidersTest, MasterMovesInProportion) {
    TrackBuilder volumes;
    constexpr int kVolumes[]{100, 10, 1, 0, 127};
    for (int channel = 0; channel < 5; ++channel) {
        volumes.Short(0, 0xB0 | channel, 7, kVolumes[channel]);
    }
    Open(FileOf({volumes.Note(100, 0, 60, 90).NoteOff(10, 0, 60).End()}));
    const auto shown = [this] {
        std::vector<int> values;
        for (std::size_t channel = 0; channel < 5; ++channel) {
            values.push_back(mixer.State(channel, Control::Volume).value);
        }
        return values;
    };
    mixer.TB_MasterVolChange(80); // not linked: nothing moves
    EXPECT_EQ(shown(), (std::vector<int>{100, 10, 1, 0, 127}));
    mixer.SetMasterLinked(true);
    mixer.TB_MasterVolChange(40);
    EXPECT_EQ(shown(), (std::vector<int>{50, 5, 1, 1, 64}));
    mixer.TB_MasterVolChange(127);
    EXPECT_EQ(shown(), (std::vector<int>{127, 16, 2, 1, 127}));
    mixer.TB_MasterVolChange(40);
    mixer.TB_Volume00Change(0, 80); // by hand: a new reference
    mixer.TB_MasterVolChange(20);
    EXPECT_EQ(shown(), (std::vector<int>{40, 3, 1, 1, 32}));
    mixer.TB_MasterVolChange(0);
    EXPECT_EQ(shown(), (std::vector<int>{1, 1, 1, 1, 1}));
    mixer.SetMasterLinked(false);
    mixer.SetMasterLinked(true); // at master 0
    mixer.TB_MasterVolChange(3);
    EXPECT_EQ(shown(), (std::vector<int>{3, 3, 3, 3, 3}));
}

TEST_F(SlidersTest, InsertedInFrontOfTheFirstNoteAndTakenBack) {
    Open(FileOf({TrackBuilder().Note(30, 0, 60, 90).NoteOff(900, 0, 60).End()}));
    const Bytes before = Saved();
    Seek(10);
    Play();
    mixer.TB_ReverbChange(0, 77);
    EXPECT_FALSE(session.Modified());
    EXPECT_TRUE(mixer.CanInsertAtStart(0, Control::Reverb));
    EXPECT_FALSE(mixer.InsertAtStart(1, Control::Reverb, host)); // a channel without events
    EXPECT_TRUE(mixer.InsertAtStart(0, Control::Reverb, host));
    EXPECT_TRUE(session.Controls().Playing());
    EXPECT_EQ(song::CheckSong(session.Song()), "");
    EXPECT_EQ(Track(1), "0 B05B4D; 30 903C5A; 930 803C40");
    EXPECT_TRUE(mixer.State(0, Control::Reverb).inEffect);
    EXPECT_FALSE(mixer.CanInsertAtStart(0, Control::Reverb));
    session.TakeBackLastChange(host);
    EXPECT_EQ(Saved(), before);
    EXPECT_TRUE(mixer.State(0, Control::Reverb).Hollow());
}

TEST_F(SlidersTest, NothingIsInsertedWhereTheSongSetsItInTime) {
    TrackBuilder track;
    track.Short(30, 0xB0, 91, 5).Note(0, 0, 60, 90).Short(0, 0xB1, 7, 9);
    track.Note(100, 1, 60, 90).Short(1, 0xB0, 93, 5).Short(0, 0xB1, 93, 6).NoteOff(9, 0, 60);
    Open(FileOf({track.NoteOff(0, 1, 60)}));
    EXPECT_FALSE(mixer.CanInsertAtStart(0, Control::Reverb));
    EXPECT_TRUE(mixer.CanInsertAtStart(0, Control::Chorus)); // behind the first note
    EXPECT_TRUE(mixer.CanInsertAtStart(1, Control::Chorus));
    EXPECT_TRUE(mixer.CanInsertAtStart(1, Control::Pan));
    EXPECT_FALSE(mixer.CanInsertAtStart(2, Control::Pan));
    EXPECT_TRUE(mixer.InsertAtStart(1, Control::Chorus, host)); // with the value shown
    EXPECT_TRUE(Track(1).starts_with("0 B15D06; 30 B05B05; ")) << Track(1);
    EXPECT_EQ(mixer.State(1, Control::Chorus).places, 2U);
}

TEST_F(SlidersTest, LaterChangesFollowByTheSameAmount) {
    struct Case {
        std::uint8_t controller;
        Control control;
        int moved;
        std::vector<int> after;
    };
    for (const Case& each : {Case{7, Control::Volume, 120, {120, 60, 127, 0}},
                             Case{7, Control::Volume, 50, {50, 25, 63, 0}},
                             Case{10, Control::Pan, 90, {90, 40, 115, 0}}}) {
        TrackBuilder track;
        for (const int value : {100, 50, 125, 0}) {
            track.Short(100, 0xB2, each.controller, value);
        }
        Open(FileOf({track.Note(100, 2, 60, 90).NoteOff(10, 2, 60).End()}));
        mixer.Move(2, each.control, each.moved);
        EXPECT_EQ(mixer.State(2, each.control).places, 4U);
        const auto values = [&] {
            std::vector<int> list;
            for (const ControllerPlace& place : mixer.Index().Places(2, each.control)) {
                list.push_back(place.event->data2);
            }
            return list;
        };
        session.MarkSaved("moved.mid", session::SaveFormat::AsSong);
        mixer.ScaleAll(2, each.control);
        EXPECT_TRUE(session.Modified());
        mixer.ScaleAll(2, each.control); // changes nothing more
        EXPECT_EQ(values(), each.after);
        mixer.Btn_ResetClick(2);
        EXPECT_EQ(values(), (std::vector<int>{100, 50, 125, 0}));
        EXPECT_EQ(int{mixer.State(2, each.control).value}, 100);
    }
}

TEST_F(SlidersTest, ResetAndSameForAllReachWhatIsInEffect) {
    TrackBuilder track;
    for (const int channel : {0, 3, 15}) {
        track.Short(0, 0xB0 | channel, 11, 40 + channel);
    }
    Open(FileOf({track.Note(10, 5, 60, 90).NoteOff(10, 5, 60).End()}));
    mixer.TB_ExpressionChange(3, 88);
    mixer.SameForAll(3, Control::Expression);
    EXPECT_EQ(Track(1), "0 B00B58; 0 B30B58; 0 BF0B58; 10 953C5A; 20 853C40");
    mixer.ResetControl(3, Control::Expression);
    EXPECT_EQ(int{mixer.State(3, Control::Expression).value}, 43);
    mixer.SetMasterLinked(true);
    mixer.TB_MasterVolChange(40);
    EXPECT_TRUE(mixer.TransposeChange(3));
    mixer.ResetAll();
    EXPECT_EQ(int{mixer.Master()}, 100);
    EXPECT_FALSE(mixer.Transposing().Any());
    EXPECT_EQ(Track(1), "0 B00B28; 0 B30B2B; 0 BF0B37; 10 953C5A; 20 853C40");
}

TEST_F(SlidersTest, AnotherSongThatIsHeardMovesNoSlider) {
    Open(LatePan());
    const auto other = std::make_shared<session::OtherSong>();
    session::Workspace work;
    Decode(work, FileOf({TrackBuilder().Short(0, 0xB0, 10, 99).Note(900, 0, 60, 90)}));
    other->song.Swap(work.song);
    Seek(300);
    ASSERT_TRUE(session.Controls().Hear(other));
    Play();
    Run(50);
    mixer.Refresh();
    EXPECT_EQ(int{mixer.State(0, Control::Pan).value}, 20);
    mixer.TB_PanoramaChange(0, 5);
    EXPECT_EQ(test::Listing(other->song.tracks[1]), "0 B00A63; 900 903C5A");
    EXPECT_EQ(int{mixer.State(0, Control::Pan).value}, 20);
}

TEST_F(SlidersTest, AnEditTakesTheEventThatASliderHolds) {
    Open(LatePan());
    Seek(300);
    mixer.TB_PanoramaChange(0, 5);
    test::EditSession(session, [](session::Workspace& work) {
        song::RemoveEvent(work.song, work.song.tracks[1], work.song.tracks[1].first->next);
    });
    mixer.TB_PanoramaChange(0, 6); // nothing is in effect here any more
    EXPECT_EQ(Track(1), "600 B00A50; 1000 903C5A; 1010 803C40");
    EXPECT_EQ(mixer.State(0, Control::Pan).places, 1U);
}

} // namespace
} // namespace tracksmith::mixer
