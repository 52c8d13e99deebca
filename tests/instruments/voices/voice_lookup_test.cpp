#include "instruments/voices/voice_lookup.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "instruments/voices/shared_sets.h"
#include "instruments/voices/voice_fixture.h"

namespace tracksmith::instruments {
namespace {

using test::Shipped;

constexpr InstrumentId kSc88Pro = 1;
constexpr InstrumentId kSc8820 = 3;
constexpr InstrumentId kMu90 = 8;
constexpr InstrumentId kMotifRackEs = 26;
constexpr InstrumentId kTyros5 = 74;
constexpr InstrumentId kScVa = 83;
constexpr InstrumentId kGenos = 87;
constexpr InstrumentId kSonority = 95;
// Without tables: one with XG and GM2, one with GM2, one with neither.
constexpr InstrumentId kGenos2 = 106;
constexpr InstrumentId kPa1000 = 91;
constexpr InstrumentId kSd9 = 92;

constexpr auto Exact = VoiceMatch::Exact;
constexpr auto Similar = VoiceMatch::Similar;
constexpr auto Unknown = VoiceMatch::Unknown;

struct LookupRow {
    const char* what;
    InstrumentId instrument;
    bool kits;
    VoiceNumbers numbers;
    LookupOptions options;
    std::string name;
    VoiceMatch match;
};

class VoiceLookupTest : public testing::TestWithParam<LookupRow> {};

TEST_P(VoiceLookupTest, Names) {
    const LookupRow& row = GetParam();
    const auto name = row.kits ? DrumsChangeName : ProgramChangeNames;
    EXPECT_EQ(name(Shipped(), row.instrument, row.numbers, row.options, Language::English),
              row.name)
        << row.what;
    const FoundVoice found =
        FindVoice(Shipped(), row.instrument, row.kits, row.numbers, row.options);
    EXPECT_EQ(found.match, row.match) << row.what;
    EXPECT_EQ(found.voice == nullptr, row.match == Unknown);
}

LookupOptions Map(std::int32_t number) {
    return {.rolandScMap = number};
}

INSTANTIATE_TEST_SUITE_P(
    OwnTable, VoiceLookupTest,
    testing::Values(
        LookupRow{"own", kTyros5, false, {0, 112, 0}, {}, "GrandPiano (Live!)", Exact},
        LookupRow{"own kit", kTyros5, true, {127, 0, 8}, {}, "RoomKit", Exact},
        LookupRow{"fixed kit", kTyros5, true, {126, 5, 43}, {}, "PopLatin Kit 1 (Live!)", Exact},
        LookupRow{"kits apart", kTyros5, false, {127, 0, 8}, {}, "unknown 127·0·9", Unknown},
        LookupRow{"unknown", kTyros5, false, {8, 0, 127}, {}, "unknown 8·0·128", Unknown},
        LookupRow{"user voices", kTyros5, false, {63, 0, 0}, {}, "unknown 63·0·1", Unknown},
        LookupRow{"SC default map 1", kSc88Pro, false, {8, 0, 4}, Map(1), "Detuned EP 1", Exact},
        LookupRow{"SC default map 3", kSc88Pro, false, {8, 0, 4}, Map(3), "St.Soft EP", Exact},
        LookupRow{"SC map not offered", kSc88Pro, false, {8, 0, 4}, Map(9), "St.Soft EP", Exact},
        LookupRow{"SC named map", kSc88Pro, false, {8, 1, 4}, Map(3), "Detuned EP 1", Exact},
        LookupRow{"SC kit", kSc88Pro, true, {0, 0, 26}, Map(1), "unknown 0·0·27", Unknown},
        LookupRow{"SC kit in map", kSc88Pro, true, {0, 0, 26}, Map(3), "DANCE", Exact},
        LookupRow{"SC kit ignores MSB", kSc88Pro, true, {127, 0, 26}, Map(3), "DANCE", Similar},
        LookupRow{"SC GM2 has no maps", kSc8820, false, {121, 0, 0}, {}, "Piano 1", Exact},
        LookupRow{"Motif presets", kMotifRackEs, false, {63, 0, 0}, {}, "Full Grand", Exact},
        LookupRow{"no XG on Motif", kMotifRackEs, false, {64, 0, 0}, {}, "unknown 64·0·1", Unknown},
        LookupRow{"Motif's GM kit", kMotifRackEs, true, {0, 0, 0}, {}, "Stereo GM", Similar},
        LookupRow{"GM kit at last", kSonority, true, {0, 1, 0}, {}, "Standard Kit", Similar},
        LookupRow{"GM itself", kGmSoundset, false, {0, 0, 40}, {}, "Violin", Exact},
        LookupRow{"GM has no banks", kGmSoundset, false, {8, 0, 40}, {}, "Violin", Similar},
        LookupRow{"GM has one kit", kGmSoundset, true, {0, 0, 25}, {}, "GM2 Analog", Similar}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

INSTANTIATE_TEST_SUITE_P(
    Sets, VoiceLookupTest,
    testing::Values(
        LookupRow{"XG beside", kGenos, false, {64, 0, 0}, {}, "Cutting Noise", Exact},
        LookupRow{"XG gap filled", kTyros5, false, {64, 0, 0}, {}, "Cutting Noise", Exact},
        LookupRow{"XG falls back", kGenos, false, {0, 44, 24}, {}, "Nylon Guitar", Similar},
        LookupRow{
            "GM2 beside", kGenos, false, {121, 1, 0}, {}, "Acoustic Grand Piano (wide)", Exact},
        LookupRow{
            "GM2 falls back", kGenos, false, {121, 9, 24}, {}, "Acoustic Guitar (nylon)", Similar},
        LookupRow{
            "GM2 not sure", kMu90, false, {121, 1, 0}, {}, "Acoustic Grand Piano (wide)", Similar},
        LookupRow{"GM2 kit", kGenos, true, {120, 0, 25}, {}, "GM2 Analog", Exact},
        LookupRow{"no table, XG", kGenos2, false, {0, 0, 24}, {}, "Nylon Guitar", Exact},
        LookupRow{"no table, panel", kGenos2, false, {8, 34, 24}, {}, "unknown 8·34·25", Unknown},
        LookupRow{"no table, XG kit", kGenos2, true, {127, 0, 25}, {}, "Analog Kit", Exact},
        LookupRow{"kit at bank 0", kGenos2, true, {0, 0, 25}, {}, "Analog Kit", Similar},
        LookupRow{
            "kit nobody knows", kGenos2, true, {127, 0, 99}, {}, "unknown 127·0·100", Unknown},
        LookupRow{"SFX kits apart", kGenos2, true, {126, 0, 25}, {}, "unknown 126·0·26", Unknown},
        LookupRow{
            "no table, GM2", kPa1000, false, {121, 1, 0}, {}, "Acoustic Grand Piano (wide)", Exact},
        LookupRow{"no table, GM", kPa1000, false, {0, 0, 40}, {}, "Violin", Exact},
        LookupRow{"GM2 has no other", kPa1000, false, {8, 0, 40}, {}, "unknown 8·0·41", Unknown},
        LookupRow{"Korg's spelling", kPa1000, true, {120, 0, 56}, {}, "GM2 SFZ", Exact},
        LookupRow{"Korg from XG", kPa1000, true, {127, 0, 56}, {}, "GM2 SFZ", Similar},
        LookupRow{"neither", kSd9, false, {0, 0, 40}, {}, "Violin", Exact},
        LookupRow{"neither, any bank", kSd9, false, {8, 3, 40}, {}, "Violin", Similar},
        LookupRow{"neither, kit", kSd9, true, {0, 0, 0}, {}, "Standard Kit", Exact},
        LookupRow{"neither, other kit", kSd9, true, {0, 0, 25}, {}, "GM2 Analog", Similar},
        LookupRow{"neither, no kit", kSd9, true, {0, 0, 99}, {}, "unknown 0·0·100", Unknown},
        LookupRow{"SC without table", kScVa, false, {8, 2, 40}, {}, "Violin", Similar},
        LookupRow{"above 108", 200, false, {8, 0, 40}, {}, "Violin", Similar}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

// Whatever a song selects on a drum part, a kit is shown or nothing at all, and not one for all.
TEST(FindVoice, KitsAndVoicesNeverMix) {
    for (const Instrument& instrument : Catalogue()) {
        for (int number = 0; number < 128 * 128; number += 37) {
            const VoiceNumbers numbers{static_cast<std::uint8_t>(number / 128), 0,
                                       static_cast<std::uint8_t>(number % 128)};
            for (const bool kits : {false, true}) {
                const FoundVoice found = FindVoice(Shipped(), instrument.id, kits, numbers);
                ASSERT_TRUE(found.voice == nullptr || found.voice->IsKit() == kits)
                    << instrument.name << ' ' << numbers;
                ASSERT_TRUE(found.match != VoiceMatch::Exact || found.voice->msb == numbers.msb);
            }
        }
        const FoundVoice standard = FindVoice(Shipped(), instrument.id, true, {127, 0, 0});
        const FoundVoice analog = FindVoice(Shipped(), instrument.id, true, {127, 0, 25});
        EXPECT_NE(standard.voice, analog.voice) << instrument.name;
    }
}

TEST(NumbersInForce, StartInTheBankOfTheInstrument) {
    const auto start = [](InstrumentId id, bool kits) {
        return NumbersInForce(id, kits, {}, {}, 5);
    };
    EXPECT_EQ(start(kGenos2, true), (VoiceNumbers{127, 0, 5}));
    EXPECT_EQ(start(kGenos2, false), (VoiceNumbers{0, 0, 5}));
    EXPECT_EQ(start(kPa1000, true), (VoiceNumbers{120, 0, 5}));
    EXPECT_EQ(start(kPa1000, false), (VoiceNumbers{121, 0, 5}));
    EXPECT_EQ(start(kSd9, true), (VoiceNumbers{0, 0, 5}));
    EXPECT_EQ(NumbersInForce(kPa1000, true, 0, 7, 5), (VoiceNumbers{0, 7, 5}));
    EXPECT_TRUE(IsKitBank(kGenos2, 126) && IsKitBank(kPa1000, 120));
    EXPECT_FALSE(IsKitBank(kPa1000, 127) || IsKitBank(kSd9, 120) || IsKitBank(kGenos2, 121));
}

TEST(PatchName, FixedKitsOfTheTyros5ComeBeforeItsTable) {
    const auto name = [](std::uint8_t msb, std::uint8_t program, bool drums = true) {
        return PatchName(Shipped(), {kTyros5, drums, {msb, 0, program}}, {}, Language::German);
    };
    EXPECT_EQ(name(126, 43), "PopLatin Kit 1 (Live!)");
    EXPECT_EQ(name(126, 75, false), "New Arabic Kit 1 (Live!)");
    EXPECT_EQ(name(126, 86), "AlpenFX (Live!)");
    EXPECT_EQ(name(126, 118), "Brazil Kit 2 (Live!)");
    EXPECT_EQ(name(126, 44), "PopLatinKit2 (Live!)");
    EXPECT_EQ(name(127, 43), "unbekannt 127·0·44");
    EXPECT_EQ(name(127, 8, false), "unbekannt 127·0·9");
    EXPECT_EQ(PatchName(Shipped(), {kGenos, true, {126, 0, 118}}, {}, Language::English),
              "unknown 126·0·119");
}

TEST(NameVoice, TellsWhichNumbersANameBelongsTo) {
    const NamedVoice similar =
        NameVoice(Shipped(), {kGenos2, false, {0, 44, 24}}, {}, Language::English);
    EXPECT_EQ(similar.match, VoiceMatch::Similar);
    EXPECT_EQ(similar.numbers, (VoiceNumbers{0, 0, 24}));
    const NamedVoice fixed =
        NameVoice(Shipped(), {kTyros5, true, {126, 3, 43}}, {}, Language::English);
    EXPECT_EQ(fixed.match, VoiceMatch::Exact);
    EXPECT_EQ(fixed.numbers, (VoiceNumbers{126, 3, 43}));
}

} // namespace
} // namespace tracksmith::instruments
