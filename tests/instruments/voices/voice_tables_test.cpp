#include "instruments/voices/voice_tables.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <thread>

#include "support/temporary_folder.h"

#include "instruments/voices/voice_fixture.h"

namespace tracksmith::instruments {
namespace {

using test::PutText;
using test::TableOf;

std::string OneVoice(const std::string& name) {
    return TableOf("Panel\tPiano\t0\t0\t0\t" + name + '\n');
}

class VoiceTablesTest : public testing::Test {
protected:
    std::string_view FirstName(InstrumentId instrument) const {
        const VoiceTable* table = tables_.OwnTable(instrument);
        return table == nullptr ? "" : table->Voices()[0].name;
    }

    tracksmith::test::TemporaryFolder folder_;
    VoiceTables tables_{{folder_ / "own", folder_ / "missing", folder_ / "shipped"}};
};

TEST_F(VoiceTablesTest, TheEarlierFolderWins) {
    PutText(folder_ / "own/062-my tyros.tsv", OneVoice("other name"));
    PutText(folder_ / "own/062-yamaha-tyros-4.tsv", OneVoice("own"));
    PutText(folder_ / "shipped/062-yamaha-tyros-4.tsv", OneVoice("shipped"));
    PutText(folder_ / "shipped/063-x.tsv", OneVoice("by code alone"));
    PutText(folder_ / "shipped/109-x.tsv", OneVoice("no instrument"));
    PutText(folder_ / "shipped/64-x.tsv", OneVoice("two digits"));
    PutText(folder_ / "shipped/065-x.txt", OneVoice("other kind"));
    EXPECT_EQ(FirstName(62), "own");
    EXPECT_EQ(tables_.PathOf(62).filename(), "062-yamaha-tyros-4.tsv");
    EXPECT_EQ(FirstName(63), "by code alone");
    for (const InstrumentId without : std::to_array<InstrumentId>({64, 65, 109, 255})) {
        EXPECT_FALSE(tables_.HasOwnTable(without)) << int{without};
        EXPECT_TRUE(tables_.Problems(without, Language::English).empty());
    }
}

TEST_F(VoiceTablesTest, ABrokenTableIsPassedOverAndTold) {
    PutText(folder_ / "own/062-yamaha-tyros-4.tsv", TableOf("Panel\tPiano\t0\t0\n"));
    PutText(folder_ / "shipped/062-yamaha-tyros-4.tsv", OneVoice("shipped"));
    PutText(folder_ / "own/063-x.tsv", "");
    std::filesystem::create_directories(folder_ / "own/064-folder.tsv");
    EXPECT_EQ(FirstName(62), "shipped");
    const auto problems = tables_.Problems(62, Language::German);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(problems[0].find("062-yamaha-tyros-4.tsv: Zeile 2: "), std::string::npos);
    for (const InstrumentId broken : std::to_array<InstrumentId>({63, 64})) {
        EXPECT_FALSE(tables_.HasOwnTable(broken));
        EXPECT_EQ(tables_.Problems(broken, Language::English).size(), 1U) << int{broken};
    }
}

TEST(VoiceTables, ManyThreadsLoadEachTableOnce) {
    const VoiceTables tables({test::ShippedVoices()});
    std::array<std::array<const VoiceTable*, kInstrumentCount>, 4> seen{};
    std::vector<std::jthread> threads;
    for (auto& mine : seen) {
        threads.emplace_back([&] {
            for (std::size_t id = 0; id < kInstrumentCount; ++id) {
                mine[id] = tables.OwnTable(static_cast<InstrumentId>(id));
            }
        });
    }
    threads.clear();
    EXPECT_TRUE(std::ranges::all_of(seen, [&](const auto& mine) { return mine == seen[0]; }));
    EXPECT_EQ(kInstrumentCount - 28U,
              static_cast<std::size_t>(std::ranges::count(seen[0], nullptr)));
}

} // namespace
} // namespace tracksmith::instruments
