#include "instruments/voices/voice_list.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "support/temporary_folder.h"

#include "instruments/voices/voice_fixture.h"
#include "instruments/voices/voice_search.h"

namespace tracksmith::instruments {
namespace {

using test::Shipped;

constexpr InstrumentId kSc88Pro = 1;
constexpr InstrumentId kMotifRackEs = 26;
constexpr InstrumentId kTyros4 = 62; // no table
constexpr InstrumentId kHq200 = 65;  // no table, no sets
constexpr InstrumentId kTyros5 = 74;
constexpr InstrumentId kGenos = 87;
constexpr InstrumentId kPa1000 = 91; // no table

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
    const VoiceList list = VoicesOf(tables, kHq200, with);
    EXPECT_EQ(list.own, 1U);
    EXPECT_EQ(list.voices.front()->name, "Te200 voice");
    EXPECT_EQ(VoicesOf(tables, kHq200).voices.size() + 1, list.voices.size());
}

TEST(VoicesOf, ListsOwnVoicesThenInheritedSets) {
    const auto count = [](InstrumentId id, std::string_view family) {
        const auto voices = VoicesOf(Shipped(), id).voices;
        return std::ranges::count(voices, family, &Voice::family);
    };
    const auto sizes = [](InstrumentId id) {
        const VoiceList list = VoicesOf(Shipped(), id);
        return std::pair(list.own, list.Inherited().size());
    };
    EXPECT_EQ(count(kGenos, "Panel"), 956);
    EXPECT_EQ(count(kGenos, "GM2"), 256);
    EXPECT_EQ(count(kTyros5, "GM2"), 256);
    EXPECT_EQ(count(kTyros5, "XG"), 480);
    EXPECT_EQ(count(kMotifRackEs, "XG") + count(kMotifRackEs, "GM2"), 0);
    EXPECT_EQ(sizes(kGenos), std::pair(std::size_t{1711}, std::size_t{745}));
    EXPECT_EQ(sizes(kTyros4), std::pair(std::size_t{0}, std::size_t{480 + 11 + 256 + 9}));
    EXPECT_EQ(sizes(kPa1000), std::pair(std::size_t{0}, std::size_t{256 + 9}));
    EXPECT_EQ(sizes(kHq200), std::pair(std::size_t{0}, std::size_t{129}));
    EXPECT_EQ(sizes(kSc88Pro), std::pair(std::size_t{2043}, std::size_t{0}));
    EXPECT_EQ(NamingTable(Shipped(), kGenos), kGenos);
    EXPECT_EQ(NamingTable(Shipped(), kTyros4), kXgSoundset);
    EXPECT_EQ(NamingTable(Shipped(), kPa1000), kGm2Soundset);
    EXPECT_EQ(NamingTable(Shipped(), kHq200), kGmSoundset);
}

TEST(VoicesOf, EveryListedVoiceIsNamedAsListed) {
    for (const Instrument& instrument : Catalogue()) {
        const VoiceList list = VoicesOf(Shipped(), instrument.id);
        ASSERT_FALSE(list.voices.empty());
        for (const Voice* voice : list.voices) {
            const FoundVoice found =
                FindVoice(Shipped(), instrument.id, voice->IsKit(), voice->Numbers());
            ASSERT_EQ(found.voice, voice) << instrument.name << ' ' << voice->Numbers();
            ASSERT_EQ(found.match, VoiceMatch::Exact) << instrument.name << ' ' << voice->Numbers();
        }
    }
}

TEST(VoicesOf, ListsFixedKitsUnderTheirNames) {
    const auto kits = SearchVoices(Shipped(), kTyros5, "126 drums latin 1").voices;
    ASSERT_EQ(kits.size(), 1U);
    EXPECT_EQ(kits[0]->name, "PopLatin Kit 1 (Live!)");
    EXPECT_EQ(SearchVoices(Shipped(), kTyros5, "126/0/119").voices.at(0)->name,
              "Brazil Kit 2 (Live!)");
}

struct SearchRow {
    const char* text;
    VoiceHit hit;
};

class VoiceSearchTest : public testing::TestWithParam<SearchRow> {};

TEST_P(VoiceSearchTest, FindsByNameNumbersAndGroup) {
    const Voice voice{.msb = 8,
                      .lsb = 34,
                      .name = "HÖRNER × 4 Soft",
                      .program = 60,
                      .family = "Legacy",
                      .category = "Bläser"};
    EXPECT_EQ(VoiceSearch(GetParam().text).Match(voice), GetParam().hit) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VoiceSearchTest,
    testing::Values(SearchRow{"", VoiceHit::Name}, SearchRow{"   ", VoiceHit::Name},
                    SearchRow{"hörner", VoiceHit::Name}, SearchRow{"÷", VoiceHit::None},
                    SearchRow{"soft × HÖR", VoiceHit::Name}, SearchRow{"BLÄSER", VoiceHit::Group},
                    SearchRow{"bläs soft", VoiceHit::Group}, SearchRow{"legacy", VoiceHit::Group},
                    SearchRow{"soft piano", VoiceHit::None}, SearchRow{"8", VoiceHit::Name},
                    SearchRow{"34", VoiceHit::Name}, SearchRow{"61", VoiceHit::Name},
                    SearchRow{"60", VoiceHit::None}, SearchRow{"4", VoiceHit::Name},
                    SearchRow{"8/34", VoiceHit::Name}, SearchRow{"8·34·61", VoiceHit::Name},
                    SearchRow{"8-34-61", VoiceHit::Name}, SearchRow{"8.34.60", VoiceHit::None},
                    SearchRow{"34/61", VoiceHit::None}, SearchRow{"8/34/61/1", VoiceHit::None},
                    SearchRow{"8/", VoiceHit::None}, SearchRow{"8 34 61 soft", VoiceHit::Name},
                    SearchRow{"99999999999999999999", VoiceHit::None}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(SearchVoices, HitsInNamesComeFirstAmongOwnAndAmongInherited) {
    const VoiceList list = SearchVoices(Shipped(), kGenos, "choir");
    const auto isByName = [](const Voice* voice) {
        return voice->name.find("Choir") != std::string_view::npos ||
               voice->name.find("choir") != std::string_view::npos;
    };
    EXPECT_TRUE(std::ranges::is_partitioned(list.Own(), isByName));
    EXPECT_TRUE(isByName(list.Own().front()) && !isByName(list.Own().back()));
    EXPECT_TRUE(isByName(list.Inherited().front()));
    EXPECT_EQ(list.Inherited().back()->family, "GM2");
    EXPECT_EQ(SearchVoices(Shipped(), kHq200, "").voices.size(), 129U);
    EXPECT_EQ(SearchVoices(Shipped(), kHq200, "brass tuba").voices.size(), 1U);
    EXPECT_TRUE(SearchVoices(Shipped(), kHq200, "piano lead").voices.empty());
}

} // namespace
} // namespace tracksmith::instruments
