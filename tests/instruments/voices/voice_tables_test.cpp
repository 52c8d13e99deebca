#include "instruments/voices/voice_tables.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <thread>

#include "base/recording_message_host.h"
#include "support/failing_allocation.h"
#include "support/temporary_folder.h"

#include "instruments/voices/user_table.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_fixture.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments {
namespace {

using test::PutText;
using test::TableOf;
using tracksmith::test::FailingAllocation;

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

TEST_F(VoiceTablesTest, AFolderThatCannotBeReadIsTold) {
    PutText(folder_ / "missing", "no folder");
    PutText(folder_ / "shipped/062-yamaha-tyros-4.tsv", OneVoice("shipped"));
    EXPECT_EQ(FirstName(62), "shipped");
    const auto problems = tables_.Problems(62, Language::English);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(problems[0].find("missing: The folder"), std::string::npos) << problems[0];
}

// Importing again must not lose what the user has without asking.
TEST_F(VoiceTablesTest, StoringAsksBeforeItReplaces) {
    RecordingMessageHost host;
    const auto store = [&](const char* name) {
        return StoreUserTable(tables_, 62, ReadVoiceTable(OneVoice(name)), host).has_value();
    };
    PutText(folder_ / "shipped/062-yamaha-tyros-4.tsv", OneVoice("shipped"));
    EXPECT_EQ(FirstName(62), "shipped");
    const VoiceTable* shipped = tables_.OwnTable(62);
    EXPECT_TRUE(store("first"));
    EXPECT_TRUE(host.questions.empty());
    EXPECT_EQ(FirstName(62), "first");
    EXPECT_EQ(shipped->Voices()[0].name, "shipped"); // still there for who points to it
    host.answer = false;
    EXPECT_FALSE(store("second"));
    EXPECT_EQ(FirstName(62), "first");
    host.answer = true;
    EXPECT_TRUE(store("third"));
    EXPECT_EQ(FirstName(62), "third");
    EXPECT_EQ(host.questions.size(), 2U);
    PutText(folder_ / "own/063-my own.tsv", "not readable");
    EXPECT_TRUE(tables_.HasUserTable(62));
    EXPECT_FALSE(tables_.HasUserTable(63)); // not looked at since
    EXPECT_TRUE(StoreUserTable(tables_, 63, ReadVoiceTable(OneVoice("x")), host));
    EXPECT_EQ(host.questions.size(), 3U);
    EXPECT_THROW(StoreUserTable(tables_, 109, VoiceTable(), host), VoiceFileError);
    VoiceTables nowhere({});
    EXPECT_THROW(StoreUserTable(nowhere, 62, VoiceTable(), host), VoiceFileError);
}

// Wherever memory runs out, no table and a message are left, and later asking works.
TEST_F(VoiceTablesTest, RunningOutOfMemoryIsToldAndPasses) {
    PutText(folder_ / "own/062-yamaha-tyros-4.tsv", OneVoice("own"));
    int failed = 0;
    for (int allocation = 0; allocation < 200; ++allocation) {
        const VoiceTables tables({folder_ / "own"});
        bool has = false;
        {
            const FailingAllocation failing(allocation);
            has = tables.HasOwnTable(62);
        }
        failed += has ? 0 : 1;
        EXPECT_TRUE(tables.HasOwnTable(62)) << allocation;
        EXPECT_TRUE(tables.Problems(62, Language::English).empty());
    }
    EXPECT_GT(failed, 10);
    EXPECT_LT(failed, 190);
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
