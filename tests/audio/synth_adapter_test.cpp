#include "audio/synth_adapter.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "audio_fixture.h"

namespace tracksmith::audio {
namespace {

using song::SynthMode;

using Bytes = std::vector<std::uint8_t>;

struct ResetCase {
    const char* name;
    Bytes message;
    SynthMode mode;
};

class ResetTest : public AudioTest, public testing::WithParamInterface<ResetCase> {};

TEST_P(ResetTest, ChangesTheModeAndClearsTheChannels) {
    SoftSynth synth(soundfont_, 44'100, 0.5F);
    SynthAdapter adapter(synth);
    adapter.Reset(GetParam().mode == SynthMode::Xg ? SynthMode::Gs : SynthMode::Xg);
    adapter.SendShort(0xC0, 40, 0);
    adapter.SendShort(0xB1, 0, 127);
    adapter.SendShort(0xC1, 0, 0);
    adapter.SendShort(0xB2, 7, 3);

    adapter.SendSysex(GetParam().message);

    int volume = 0;
    fluid_synth_get_cc(synth.Get(), 2, 7, &volume);
    EXPECT_EQ(volume, 100);
    EXPECT_EQ(adapter.Mode(), GetParam().mode);
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const ChannelVoice& voice = adapter.Voice(channel);
        EXPECT_EQ(voice.program, 0) << "channel " << int{channel};
        EXPECT_EQ(voice.drum, channel == 9) << "channel " << int{channel};
        EXPECT_EQ(voice.bank, channel == 9 ? kDrumBank : 0) << "channel " << int{channel};
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllDevices, ResetTest,
    testing::Values(ResetCase{"GmAll", {0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7}, SynthMode::Gm},
                    ResetCase{"GmDevice3", {0x7E, 0x03, 0x09, 0x01}, SynthMode::Gm},
                    ResetCase{"Gm2", {0x7E, 0x7F, 0x09, 0x03, 0xF7}, SynthMode::Gm2},
                    ResetCase{"GsDevice10",
                              {0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7},
                              SynthMode::Gs},
                    ResetCase{"GsDevice11",
                              {0x41, 0x11, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7},
                              SynthMode::Gs},
                    ResetCase{"XgDevice0", {0x43, 0x10, 0x4C, 0, 0, 0x7E, 0, 0xF7}, SynthMode::Xg},
                    ResetCase{"XgDevice5", {0x43, 0x15, 0x4C, 0, 0, 0x7E, 0, 0xF7}, SynthMode::Xg}),
    [](const auto& test) { return test.param.name; });

class SynthAdapterTest : public AudioTest {
protected:
    /// Loudest sample of the next quarter second.
    static float Listen(SoftSynth& synth) {
        std::vector<float> sound(2 * 11'008);
        synth.Render(sound);
        float peak = 0;
        for (const float sample : sound) {
            peak = std::max(peak, std::abs(sample));
        }
        return peak;
    }
};

TEST_F(SynthAdapterTest, PartMessagesMakeDrumsAndMelody) {
    SoftSynth synth(soundfont_, 44'100, 0.5F);
    SynthAdapter adapter(synth);
    adapter.Reset(SynthMode::Gs);
    adapter.SendSysex(Bytes{0x41, 0x10, 0x42, 0x12, 0x40, 0x1A, 0x15, 0x02, 0x0F, 0xF7});
    EXPECT_EQ(adapter.Voice(10).bank, kDrumBank);
    adapter.SendSysex(Bytes{0x41, 0x10, 0x42, 0x12, 0x40, 0x10, 0x15, 0x00, 0x1B, 0xF7});
    EXPECT_FALSE(adapter.Voice(9).drum);
    // Part 1 is channel 1; a wrong checksum is not obeyed.
    adapter.SendSysex(Bytes{0x41, 0x10, 0x42, 0x12, 0x40, 0x11, 0x15, 0x01, 0x00, 0xF7});
    EXPECT_FALSE(adapter.Voice(0).drum);

    adapter.Reset(SynthMode::Xg);
    adapter.SendSysex(Bytes{0x43, 0x10, 0x4C, 0x08, 0x03, 0x07, 0x02, 0xF7});
    EXPECT_EQ(adapter.Voice(3).bank, kDrumBank);
    adapter.SendShort(0xC3, 0, 0);
    EXPECT_TRUE(adapter.Voice(3).drum);
}

TEST_F(SynthAdapterTest, MissingBankStillSounds) {
    SoftSynth synth(soundfont_, 44'100, 0.5F);
    SynthAdapter adapter(synth);
    adapter.Reset(SynthMode::Gs);
    adapter.SendShort(0xB0, 0, 101);
    adapter.SendShort(0xC0, 56, 0);
    EXPECT_EQ(adapter.Voice(0), (ChannelVoice{0, 56, false, false}));
    adapter.SendShort(0x90, 60, 100);
    EXPECT_GT(Listen(synth), 0.01F);
}

TEST_F(SynthAdapterTest, ModeMessageOnOneChannelLeavesTheOthersPlaying) {
    SoftSynth synth(soundfont_, 44'100, 0.5F);
    SynthAdapter adapter(synth);
    adapter.SendShort(0xB0, 126, 1);
    adapter.SendShort(0x95, 60, 100);
    EXPECT_GT(Listen(synth), 0.01F);
}

TEST_F(SynthAdapterTest, SecondDataByteIsMasked) {
    SoftSynth synth(soundfont_, 44'100, 0.5F);
    SynthAdapter adapter(synth);
    adapter.SendShort(0xB4, 7, 0x80 | 55);
    int volume = 0;
    fluid_synth_get_cc(synth.Get(), 4, 7, &volume);
    EXPECT_EQ(volume, 55);
}

TEST_F(SynthAdapterTest, ReleaseAllEndsHeldNotes) {
    SoftSynth synth(soundfont_, 44'100, 0.5F);
    SynthAdapter adapter(synth);
    adapter.SendShort(0xC0, 16, 0); // an organ: sounds as long as it is held
    adapter.SendShort(0xB0, 64, 127);
    adapter.SendShort(0x90, 60, 100);
    Listen(synth);
    ASSERT_GT(synth.ActiveVoices(), 0);
    adapter.ReleaseAll();
    for (int i = 0; i < 8 && synth.ActiveVoices() > 0; ++i) {
        Listen(synth);
    }
    EXPECT_EQ(synth.ActiveVoices(), 0);
}

} // namespace
} // namespace tracksmith::audio
