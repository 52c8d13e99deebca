#include "mixer/mixer_fixture.h"

namespace tracksmith::mixer {
namespace {

using test::Bytes;
using test::TrackBuilder;

class TransposingTest : public test::MixerFixture {
protected:
    /// A note of each of four channels; channel 12 is a drum part by its GS part mode.
    void OpenParts() {
        const Bytes drums{0x41, 0x10, 0x42, 0x12, 0x40, 0x1B, 0x15, 0x01, 0x0F, 0xF7};
        TrackBuilder notes;
        notes.Sysex(0, drums);
        for (const int channel : {0, 1, 9, 11}) {
            notes.Note(0, channel, 60, 90).Short(0, 0xA0 | channel, 60, 5);
        }
        for (const int channel : {0, 1, 9, 11}) {
            notes.NoteOff(channel == 0 ? 500 : 0, channel, 60);
        }
        Open(FileOf({notes.Note(100, 0, 125, 90).NoteOff(50, 0, 125).End()}));
    }
};

TEST_F(TransposingTest, PitchesFoldByOctaves) {
    for (const auto& [pitch, semitones, sounding] : {std::array{60, 2, 62},
                                                     {127, 0, 127},
                                                     {127, 1, 116},
                                                     {0, -1, 11},
                                                     {5, -24, 5},
                                                     {120, 24, 120},
                                                     {64, -60, 4}}) {
        EXPECT_EQ(int{SoundingPitch(static_cast<std::uint8_t>(pitch), semitones)}, sounding)
            << pitch << " " << semitones;
    }
}

TEST_F(TransposingTest, MovesPairsOfAllButDrumParts) {
    OpenParts();
    EXPECT_TRUE(mixer.TransposeChange(3));
    EXPECT_TRUE(mixer.TransposeChannel(1, -5));
    EXPECT_TRUE(mixer.PlaysDrums(9));
    EXPECT_TRUE(mixer.PlaysDrums(11));
    const std::string notes = Track(1);
    EXPECT_EQ(notes.substr(notes.find("; 0 90") + 2),
              "0 903F5A; 0 A03F05; 0 913A5A; 0 A13A05; 0 993C5A; 0 A93C05; 0 9B3C5A; 0 AB3C05; "
              "500 803F40; 500 813A40; 500 893C40; 500 8B3C40; 600 90745A; 650 807440");
    EXPECT_TRUE(session.Modified());
    mixer.Btn_ResetClick(1);
    EXPECT_EQ(mixer.Transposing().channels[1], 0);
    EXPECT_TRUE(mixer.TransposeChange(0));
    EXPECT_EQ(Track(1).find("3F"), std::string::npos);
}

TEST_F(TransposingTest, WhatSoundsEndsAtItsOldPitch) {
    OpenParts();
    Play();
    Run(100);
    EXPECT_TRUE(mixer.TransposeChannel(1, 1));
    EXPECT_EQ(TakeAll(), (Messages{{0x81, 60, 64}})); // on no other channel
    EXPECT_TRUE(mixer.TransposeChannel(0, 2));
    EXPECT_EQ(TakeAll(), (Messages{{0x80, 60, 64}}));
    const Messages later = Run(450);
    EXPECT_TRUE(Has(later, {0x80, 62, 64})); // nothing hangs, whatever sounded meanwhile
    EXPECT_TRUE(Has(later, {0x81, 61, 64}));
}

TEST_F(TransposingTest, SavingKeepsItAndBeginsAnew) {
    OpenParts();
    EXPECT_TRUE(mixer.TransposeChange(2));
    session.MarkSaved("moved.mid", session::SaveFormat::AsSong);
    EXPECT_FALSE(mixer.Transposing().Any());
    const std::string moved = Track(1);
    EXPECT_TRUE(mixer.TransposeChange(1));
    EXPECT_TRUE(mixer.TransposeChange(0));
    EXPECT_EQ(Track(1), moved);
    EXPECT_NE(moved.find("0 903E5A"), std::string::npos);
}

TEST_F(TransposingTest, StaysOverEditsAndTakingThemBack) {
    OpenParts();
    const std::string file = Track(1);
    mixer.InsertAtStart(0, Control::Volume, host);
    EXPECT_TRUE(mixer.TransposeChange(1));
    const std::string moved = Track(1);
    session.TakeBackLastChange(host);
    EXPECT_NE(Track(1).find("0 903D5A"), std::string::npos);
    EXPECT_TRUE(mixer.TransposeChange(0));
    EXPECT_EQ(Track(1), file);
    EXPECT_TRUE(mixer.TransposeChange(1));
    session.TakeBackLastChange(host);
    EXPECT_EQ(Track(1), moved);
    Open(ThreeNotes());
    EXPECT_FALSE(mixer.Transposing().Any());
}

} // namespace
} // namespace tracksmith::mixer
