#include "audio/channel_map.h"

#include <gtest/gtest.h>
#include <ostream>
#include <set>
#include <utility>

namespace tracksmith::audio {

void PrintTo(const ChannelVoice& voice, std::ostream* out) {
    *out << "bank " << voice.bank << " program " << voice.program << (voice.drum ? " drum" : "")
         << (voice.exact ? "" : " similar");
}

namespace {

using song::SynthMode;

/// A SoundFont with bank 0, program 4 in the banks 3, 8 and 64, and the kits 0, 8 and 25.
bool HasPreset(int bank, int program) {
    static const std::set<std::pair<int, int>> kOthers{{3, 4},   {8, 4},   {64, 4},
                                                       {128, 0}, {128, 8}, {128, 25}};
    return (bank == 0 && program != 99) || kOthers.count({bank, program}) != 0;
}

struct Selection {
    SynthMode mode;
    std::uint8_t channel;
    int msb; // -1: no bank select
    int lsb;
    std::uint8_t program;
    ChannelVoice expected;
};

class BankSelectTest : public testing::TestWithParam<Selection> {};

TEST_P(BankSelectTest, FindsTheVoiceOrTheNearest) {
    const Selection& given = GetParam();
    ChannelMap map(HasPreset);
    map.Reset(given.mode);
    if (given.msb >= 0) {
        map.SelectBankMsb(given.channel, static_cast<std::uint8_t>(given.msb));
        map.SelectBankLsb(given.channel, static_cast<std::uint8_t>(given.lsb));
    }
    EXPECT_EQ(map.ChangeProgram(given.channel, given.program), given.expected);
}

constexpr bool kDrum = true;
constexpr bool kMelody = false;
constexpr bool kExact = true;
constexpr bool kSimilar = false;

INSTANTIATE_TEST_SUITE_P(
    Modes, BankSelectTest,
    testing::Values(
        // GM knows no banks; channel 10 is drums whatever was selected.
        Selection{SynthMode::Gm, 0, 8, 3, 4, {0, 4, kMelody, kExact}},
        Selection{SynthMode::Gm, 9, 0, 0, 25, {128, 25, kDrum, kExact}},
        Selection{SynthMode::Gm, 0, -1, 0, 99, {0, 96, kMelody, kSimilar}},
        // GS: the MSB is the variation, the LSB the map.
        Selection{SynthMode::Gs, 0, 8, 3, 4, {8, 4, kMelody, kExact}},
        Selection{SynthMode::Gs, 0, 9, 0, 4, {8, 4, kMelody, kSimilar}},
        Selection{SynthMode::Gs, 0, 8, 0, 5, {0, 5, kMelody, kSimilar}},
        Selection{SynthMode::Gs, 9, -1, 0, 9, {128, 8, kDrum, kSimilar}},
        Selection{SynthMode::Gs, 9, -1, 0, 40, {128, 0, kDrum, kSimilar}},
        // XG: the LSB is the variation, the MSB tells drums and effects.
        Selection{SynthMode::Xg, 0, 0, 3, 4, {3, 4, kMelody, kExact}},
        Selection{SynthMode::Xg, 0, 0, 7, 4, {0, 4, kMelody, kSimilar}},
        Selection{SynthMode::Xg, 0, 64, 0, 4, {64, 4, kMelody, kExact}},
        Selection{SynthMode::Xg, 0, 48, 3, 4, {0, 4, kMelody, kSimilar}},
        Selection{SynthMode::Xg, 2, 127, 0, 25, {128, 25, kDrum, kExact}},
        Selection{SynthMode::Xg, 2, 126, 0, 0, {128, 0, kDrum, kSimilar}},
        Selection{SynthMode::Xg, 9, -1, 0, 8, {128, 8, kDrum, kExact}},
        Selection{SynthMode::Xg, 9, 0, 0, 8, {0, 8, kMelody, kExact}},
        // GM2: 120 for drums on any channel, 121 with the variation in the LSB.
        Selection{SynthMode::Gm2, 10, 120, 0, 25, {128, 25, kDrum, kExact}},
        Selection{SynthMode::Gm2, 9, 121, 3, 4, {3, 4, kMelody, kExact}},
        Selection{SynthMode::Gm2, 0, 8, 3, 4, {0, 4, kMelody, kSimilar}}));

TEST(ChannelMapTest, BankSelectWaitsForTheProgramChange) {
    ChannelMap map(HasPreset);
    map.Reset(SynthMode::Gs);
    map.ChangeProgram(0, 4);
    map.SelectBankMsb(0, 8);
    EXPECT_EQ(map.Voice(0).bank, 0);
    EXPECT_EQ(map.ChangeProgram(0, 4).bank, 8);
}

TEST(ChannelMapTest, RhythmPartIsKeptUntilTheNextReset) {
    ChannelMap map(HasPreset);
    map.Reset(SynthMode::Gs);
    map.SetRhythmPart({10, true});
    EXPECT_EQ(map.ChangeProgram(10, 25), (ChannelVoice{128, 25, true, true}));
    map.SetRhythmPart({10, true}); // said twice: the kit stays
    EXPECT_EQ(map.Voice(10).program, 25);
    map.Reset(SynthMode::Gs);
    EXPECT_EQ(map.Voice(10), (ChannelVoice{0, 0, false, true}));
}

TEST(ChannelMapTest, EmptySoundfontLeavesEveryVoiceInexact) {
    ChannelMap map([](int, int) { return false; });
    EXPECT_EQ(map.ChangeProgram(3, 12), (ChannelVoice{0, 12, false, false}));
    EXPECT_EQ(map.Voice(9), (ChannelVoice{128, 0, true, false}));
}

} // namespace
} // namespace tracksmith::audio
