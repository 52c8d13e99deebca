#include "instruments/voices/voice_lookup.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "support/temporary_folder.h"

#include "instruments/voices/voice_fixture.h"
#include "instruments/voices/voice_list.h"

namespace tracksmith::instruments {
namespace {

constexpr InstrumentId kSc88Pro = 1;
constexpr InstrumentId kSc8820 = 3;
constexpr InstrumentId kMotifRackEs = 26;
constexpr InstrumentId kTyros4 = 62; // no table
constexpr InstrumentId kHq200 = 65;  // no table
constexpr InstrumentId kTyros5 = 74;
constexpr InstrumentId kScVa = 83;
constexpr InstrumentId kGenos = 87;

const VoiceTables& Shipped() {
    static const VoiceTables tables({test::ShippedVoices()});
    return tables;
}

struct LookupRow {
    const char* what;
    InstrumentId instrument;
    bool kits;
    VoiceNumbers numbers;
    LookupOptions options;
    std::string name;
    bool exact;
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
    EXPECT_EQ(found.exact, row.exact) << row.what;
    EXPECT_EQ(found.voice == nullptr, row.name.starts_with("unknown"));
}

LookupOptions Map(std::int32_t number) {
    return {.rolandScMap = number};
}

INSTANTIATE_TEST_SUITE_P(
    Rules, VoiceLookupTest,
    testing::Values(
        LookupRow{"own", kTyros5, false, {0, 112, 0}, {}, "GrandPiano (Live!)", true},
        LookupRow{"own kit", kTyros5, true, {127, 0, 8}, {}, "RoomKit", true},
        LookupRow{"kits apart", kTyros5, false, {127, 0, 8}, {}, "unknown 127 0 8", false},
        LookupRow{"unknown", kTyros5, false, {8, 0, 127}, {}, "unknown 8 0 127", false},
        LookupRow{"SC default map 1", kSc88Pro, false, {8, 0, 4}, Map(1), "Detuned EP 1", true},
        LookupRow{"SC default map 3", kSc88Pro, false, {8, 0, 4}, Map(3), "St.Soft EP", true},
        LookupRow{"SC map not offered", kSc88Pro, false, {8, 0, 4}, Map(9), "St.Soft EP", true},
        LookupRow{"SC named map", kSc88Pro, false, {8, 1, 4}, Map(3), "Detuned EP 1", true},
        LookupRow{"SC kit", kSc88Pro, true, {0, 0, 26}, Map(1), "unknown 0 0 26", false},
        LookupRow{"SC kit in map", kSc88Pro, true, {0, 0, 26}, Map(3), "DANCE", true},
        LookupRow{"SC GM2 has no maps", kSc8820, false, {121, 0, 0}, {}, "Piano 1", true},
        LookupRow{"XG inherited", kGenos, false, {64, 0, 0}, {}, "Cutting Noise", false},
        LookupRow{"XG gap filled", kTyros5, false, {64, 0, 0}, {}, "Cutting Noise", false},
        LookupRow{"no XG on Motif", kMotifRackEs, false, {64, 0, 0}, {}, "unknown 64 0 0", false},
        LookupRow{
            "GM2 inherited", kGenos, false, {121, 1, 0}, {}, "Acoustic Grand Piano (wide)", false},
        LookupRow{"GM2 kit", kGenos, true, {120, 0, 25}, {}, "GM2 Analog", false},
        LookupRow{"user voices", kTyros5, false, {63, 0, 0}, {}, "unknown 63 0 0", false},
        LookupRow{"Motif presets", kMotifRackEs, false, {63, 0, 0}, {}, "Full Grand", true},
        LookupRow{"GM at bank 0/0", 95, true, {0, 0, 0}, {}, "Standard Kit", false},
        LookupRow{"GM nowhere else", 95, true, {0, 1, 0}, {}, "unknown 0 1 0", false},
        LookupRow{"no table", kTyros4, false, {0, 112, 40}, {}, "Violin", false},
        LookupRow{"no table, GM2", kTyros4, false, {121, 1, 40}, {}, "Violin", false},
        LookupRow{"no table, kit", kTyros4, true, {127, 0, 25}, {}, "Standard Kit", false},
        LookupRow{"no table, SC", kScVa, false, {8, 2, 40}, {}, "Violin", false},
        LookupRow{"GM itself", kGmSoundset, false, {0, 0, 40}, {}, "Violin", true},
        LookupRow{"GM has no banks", kGmSoundset, false, {8, 0, 40}, {}, "Violin", false},
        LookupRow{"above 108", 200, false, {8, 0, 40}, {}, "Violin", false}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(PatchName, FixedKitsOfTheTyros5ComeBeforeItsTable) {
    const auto name = [](std::uint8_t msb, std::uint8_t program, bool drums = true) {
        return PatchName(Shipped(), {kTyros5, drums, {msb, 0, program}}, {}, Language::German);
    };
    EXPECT_EQ(name(126, 43), "PopLatin Kit 1 (Live!)");
    EXPECT_EQ(name(126, 75), "New Arabic Kit 1 (Live!)");
    EXPECT_EQ(name(126, 86), "AlpenFX (Live!)");
    EXPECT_EQ(name(126, 118), "Brazil Kit 2 (Live!)");
    EXPECT_EQ(name(126, 44), "PopLatinKit2 (Live!)");
    EXPECT_EQ(name(127, 43), "unbekannt 127 0 43");
    EXPECT_EQ(name(127, 8, false), "unbekannt 127 0 8");
    EXPECT_EQ(PatchName(Shipped(), {kGenos, true, {126, 0, 118}}, {}, Language::English),
              "unknown 126 0 118");
}

TEST(LimexOption, AddsTheVoicesOfTheTe200) {
    const tracksmith::test::TemporaryFolder folder;
    test::PutText(folder / "058-x.tsv", test::TableOf("Own\tBox\t7\t0\t40\tTe200 voice\n"));
    const VoiceTables tables({folder.Path(), test::ShippedVoices()});
    const LookupOptions with{.limexTe200 = true};
    const auto name = [&](InstrumentId id, VoiceNumbers numbers, const LookupOptions& options) {
        return ProgramChangeNames(tables, id, numbers, options, Language::English);
    };
    for (const InstrumentId limex : std::to_array<InstrumentId>({65, 66, 77})) {
        EXPECT_EQ(name(limex, {7, 0, 40}, with), "Te200 voice");
        EXPECT_EQ(name(limex, {7, 0, 40}, {}), "Violin");
        EXPECT_EQ(name(limex, {7, 0, 41}, with), "Viola");
    }
    EXPECT_EQ(name(57, {7, 0, 40}, with), "Violin"); // no such option there
    EXPECT_EQ(VoicesOf(tables, kHq200, with).front()->name, "Te200 voice");
    EXPECT_EQ(VoicesOf(tables, kHq200).size() + 1, VoicesOf(tables, kHq200, with).size());
}

TEST(VoicesOf, ListsOwnVoicesThenInheritedSets) {
    const auto count = [](InstrumentId id, std::string_view family) {
        const auto voices = VoicesOf(Shipped(), id);
        return std::ranges::count(voices, family, &Voice::family);
    };
    EXPECT_EQ(count(kGenos, "Panel"), 956);
    EXPECT_EQ(count(kGenos, "GM2"), 256);
    EXPECT_EQ(count(kTyros5, "GM2"), 256);
    EXPECT_EQ(count(kTyros5, "XG"), 480);
    EXPECT_EQ(count(kMotifRackEs, "XG") + count(kMotifRackEs, "GM2"), 0);
    EXPECT_EQ(count(kTyros4, "GM"), 128);
    EXPECT_EQ(VoicesOf(Shipped(), kTyros4).size(), 129U);
    EXPECT_EQ(VoicesOf(Shipped(), kSc88Pro).size(), 2'043U);
}

TEST(VoicesOf, EveryListedVoiceIsNamedAsListed) {
    for (const Instrument& instrument : Catalogue()) {
        for (const Voice* voice : VoicesOf(Shipped(), instrument.id)) {
            const FoundVoice found =
                FindVoice(Shipped(), instrument.id, voice->IsKit(), voice->Numbers());
            ASSERT_EQ(found.voice, voice) << instrument.name << ' ' << voice->Numbers();
        }
    }
}

TEST(SearchVoices, EveryWordMustOccur) {
    const auto count = [](std::string_view text) {
        return SearchVoices(Shipped(), kTyros4, text).size();
    };
    EXPECT_EQ(count("  grand PIANO "), 2U); // Acoustic and Electric Grand Piano
    EXPECT_EQ(count("piano lead"), 0U);
    EXPECT_EQ(count("brass tuba"), 1U); // category and name
    EXPECT_EQ(count(""), 129U);
}

TEST(SearchVoices, LettersOfLatinScriptFold) {
    const tracksmith::test::TemporaryFolder folder;
    test::PutText(folder / "058-x.tsv", test::TableOf("Own\tBläser\t0\t0\t0\tHÖRNER × 4\n"));
    const VoiceTables tables({folder.Path()});
    EXPECT_EQ(SearchVoices(tables, 58, "hörner").size(), 1U);
    EXPECT_EQ(SearchVoices(tables, 58, "BLÄSER ×").size(), 1U);
    EXPECT_EQ(SearchVoices(tables, 58, "÷").size(), 0U);
}

} // namespace
} // namespace tracksmith::instruments
