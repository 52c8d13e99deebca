#include "instruments/revoicer/revoicer_table.h"

#include <gtest/gtest.h>
#include <string>

#include "support/scratch_settings.h"

namespace tracksmith::instruments {
namespace {

constexpr const char* kGenos = "Yamaha Genos";
const std::string kNylon = "104\t1\t3\tNylon\t0\t0\t24\tNylon Guitar";
const std::string kPiano = "8\t34\t0\tGrand\t0\t0\t0\tPiano";

TEST(RevoicerTable, EntriesAreLinesOfEightFields) {
    const auto entry = ReadRevoiceEntry(kNylon);
    ASSERT_TRUE(entry);
    EXPECT_EQ(*entry, (RevoiceEntry{{104, 1, 3}, "Nylon", {0, 0, 24}, "Nylon Guitar"}));
    EXPECT_EQ(RevoiceLine(*entry), kNylon);
    EXPECT_EQ(RevoiceLine({{1, 2, 3}, "a\tb", {4, 5, 6}, "c\r\n"}), "1\t2\t3\ta b\t4\t5\t6\tc  ");
    EXPECT_TRUE(ReadRevoiceEntry("127\t127\t127\t\t127\t127\t127\t"));
    for (const char* line : {"", "1\t2\t3\tname\t4\t5\t6", "1\t2\t3\tname\t4\t5\t6\tname\t",
                             "1\t2\t128\tname\t4\t5\t6\tname", "1\t2\t3\tname\t4\t-5\t6\tname",
                             "1\t2\t3\tname\t4\t5x\t6\tname", "1\t\t3\tname\t4\t5\t6\tname"}) {
        EXPECT_FALSE(ReadRevoiceEntry(line)) << line;
    }
}

TEST(RevoicerTable, IsStoredUnderTheGivenNames) {
    tracksmith::test::ScratchSettings scratch;
    settings::SettingsStore& store = scratch.Store();
    std::size_t badLine = 0;
    auto table = RevoicerTable::FromText(kNylon + '\n' + kPiano + '\n', badLine);
    ASSERT_TRUE(table);
    table->Tick(1, false);
    EXPECT_TRUE(table->Save(store, kGenos));
    EXPECT_EQ(store.ReadIntFromUserRegistrySubdir(kGenos, "AutoRevoicerElm", 0), 2);
    EXPECT_EQ(store.ReadStrFromUserRegistrySubdir(kGenos, "AutoRev0001", ""), kNylon);
    EXPECT_EQ(store.ReadStrFromUserRegistrySubdir(kGenos, "AutoRev0002", ""), kPiano);

    RevoicerTable stored = RevoicerTable::Load(store, kGenos);
    ASSERT_EQ(stored.Rows().size(), 2U);
    EXPECT_TRUE(stored.Rows()[0].ticked);
    EXPECT_FALSE(stored.Rows()[1].ticked);
    EXPECT_EQ(stored.Applied().size(), 1U);
    stored.Delete(0);
    EXPECT_TRUE(stored.Save(store, kGenos));
    EXPECT_EQ(store.ReadStrFromUserRegistrySubdir(kGenos, "AutoRev0001", ""), kPiano);
    EXPECT_FALSE(store.KeyInUserRegistrySubdir(kGenos, "AutoRev0002"));
    EXPECT_FALSE(RevoicerTable::Load(store, kGenos).Rows().at(0).ticked);
    EXPECT_TRUE(RevoicerTable::Load(store, "Korg Pa1000 (Musikant)").Rows().empty());
}

TEST(RevoicerTable, ForeignLinesAreKeptAndChangeNothing) {
    tracksmith::test::ScratchSettings scratch;
    settings::SettingsStore& store = scratch.Store();
    store.WriteIntToUserRegistrySubdir(kGenos, "AutoRevoicerElm", 3);
    store.WriteStrToUserRegistrySubdir(kGenos, "AutoRev0001", "1\t2\t300\tname\t4\t5\t6\tname");
    store.WriteIntToUserRegistrySubdir(kGenos, "AutoRev0002", 7); // no text at all
    store.WriteStrToUserRegistrySubdir(kGenos, "AutoRev0003", kPiano);
    RevoicerTable table = RevoicerTable::Load(store, kGenos);
    EXPECT_EQ(table.Applied().size(), 1U);
    EXPECT_TRUE(table.Put({{9, 9, 9}, "new", {0, 0, 0}, "Piano"})); // in the place of the last
    EXPECT_TRUE(table.Put({{9, 9, 9}, "new", {0, 0, 24}, "Nylon Guitar"}));
    EXPECT_EQ(table.Rows().size(), 4U);
    EXPECT_EQ(table.Rows()[2].entry->target.msb, 9);
    EXPECT_TRUE(table.Save(store, kGenos));
    EXPECT_EQ(store.ReadStrFromUserRegistrySubdir(kGenos, "AutoRev0001", ""),
              "1\t2\t300\tname\t4\t5\t6\tname");
    for (const std::int32_t count : {-1, 2'000'000'000}) {
        store.WriteIntToUserRegistrySubdir(kGenos, "AutoRevoicerElm", count);
        EXPECT_EQ(RevoicerTable::Load(store, kGenos).Applied().size(), count < 0 ? 0U : 2U);
    }
}

TEST(RevoicerTable, TextsNameTheirFirstBadLine) {
    std::size_t badLine = 0;
    const auto table = RevoicerTable::FromText(
        std::string("\xEF\xBB\xBF# head\r\n\r\n") + kNylon + "\r\n" + kPiano, badLine);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Applied().size(), 2U);
    const auto again = RevoicerTable::FromText(table->Text(), badLine);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->Applied(), table->Applied());
    EXPECT_FALSE(RevoicerTable::FromText(kNylon + "\n# note\nnothing\n" + kPiano, badLine));
    EXPECT_EQ(badLine, 3U);
    std::string full;
    for (std::size_t i = 0; i <= RevoicerTable::kMostRows; ++i) {
        full += kPiano + '\n';
    }
    EXPECT_FALSE(RevoicerTable::FromText(full, badLine));
    EXPECT_EQ(badLine, RevoicerTable::kMostRows + 1);
}

} // namespace
} // namespace tracksmith::instruments
