#include "mixer/mixer_fixture.h"

namespace tracksmith::mixer {
namespace {

using test::TrackBuilder;

/// Notes of three channels every 100 ms.
class LampsTest : public test::MixerFixture {
protected:
    void SetUp() override {
        TrackBuilder notes;
        for (int i = 0; i < 20; ++i) {
            for (int channel = 0; channel < 3; ++channel) {
                notes.Note(channel == 0 ? 90 : 0, channel, 60 + channel, 90);
            }
            for (int channel = 0; channel < 3; ++channel) {
                notes.NoteOff(channel == 0 ? 10 : 0, channel, 60 + channel);
            }
        }
        Open(FileOf({notes.End()}));
        Play();
    }
    /// The channels whose notes begin within the next 100 ms.
    std::string Heard() {
        std::string channels;
        for (const test::Bytes& message : Run(100)) {
            if ((message[0] & 0xF0) == 0x90 && message[2] > 0) {
                channels += static_cast<char>('0' + (message[0] & 0x0F));
            }
        }
        return channels;
    }
};

TEST_F(LampsTest, MutesAndSolosAreHeardTogether) {
    struct Step {
        std::size_t channel;
        bool solo, ctrl;
        const char* heard;
    };
    EXPECT_EQ(Heard(), "012");
    for (const auto& [channel, solo, ctrl, heard] :
         {Step{1, false, false, "02"},  // muted
          Step{1, true, false, ""},     // muted and solo: silent
          Step{2, true, false, "2"},    // solo beside it
          Step{0, false, true, "12"},   // Ctrl: no mutes, the solos stay
          Step{2, false, false, "1"},   // muted while solo
          Step{0, true, true, "01"}}) { // Ctrl: no solos, the mute stays
        EXPECT_EQ(solo ? mixer.Btn_Solo00MouseDown(channel, ctrl)
                       : mixer.Btn_Mute00MouseDown(channel, ctrl),
                  LampResult::Done);
        EXPECT_EQ(Heard(), heard);
        for (std::size_t each = 0; each < 3; ++each) {
            EXPECT_EQ(mixer.Audible(each),
                      std::string(heard).find(static_cast<char>('0' + each)) != std::string::npos);
        }
    }
    EXPECT_FALSE(session.Modified());
    EXPECT_EQ(mixer.Btn_Mute00MouseDown(7, false), LampResult::NotUsed);
    EXPECT_FALSE(mixer.Muted(7));
}

TEST_F(LampsTest, MutingEndsTheSoundAndChoosesTheChannel) {
    mixer.Live().SetDrumEditor(1);
    mixer.Btn_Mute00MouseDown(1, false);
    const Messages sent = TakeAll();
    for (const std::uint8_t status : test::Bytes{0xB1, 0xB9}) {
        EXPECT_TRUE(Has(sent, {status, 120, 0}));
        EXPECT_TRUE(Has(sent, {status, 123, 0}));
    }
    EXPECT_EQ(mixer.CurrentChannel(), 1U);
    mixer.Btn_Mute00MouseDown(2, true);
    EXPECT_EQ(TakeAll(), Messages()); // unmuting sends nothing
    EXPECT_EQ(mixer.CurrentChannel(), 1U);
}

TEST_F(LampsTest, LevelsRiseWithNotesAndFallWhilePlaying) {
    Run(95);
    EXPECT_EQ(mixer.Level(0), 90U);
    EXPECT_EQ(mixer.Level(5), 0U);
    mixer.LetLevelsFall();
    EXPECT_LT(mixer.Level(0), 90U);
    Stop();
    EXPECT_EQ(mixer.Level(0), std::nullopt);
}

TEST_F(LampsTest, AnotherSongBeginsWithAllLampsOff) {
    mixer.Btn_Mute00MouseDown(1, false);
    mixer.Btn_Solo00MouseDown(2, false);
    Open(ThreeNotes());
    EXPECT_TRUE(mixer.Audible(0));
    EXPECT_FALSE(mixer.Muted(1));
    EXPECT_FALSE(session.Controls().Player().ChannelMuted(1));
}

} // namespace
} // namespace tracksmith::mixer
