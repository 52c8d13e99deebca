#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

#include "instruments/voices/texts.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_fixture.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments {
namespace {

using test::TableOf;

constexpr std::string_view kLines =
    "Panel\tPiano\t0\t112\t0\tGrand \"Live\" Piano\n"
    "Panel\tPiano\t0\t112\t0\tSecond of the same numbers\n"
    "Drums\tKits\t0\t112\t0\tStandard Kit\n"
    "XG\tStrings\t127\t127\t127\tHörner\n"
    "Panel\tOrgan\t0\t113\t16\tOrgan\n";

TEST(VoiceTable, KeepsTheFileInItsOrder) {
    VoiceTable table = ReadVoiceTable(TableOf(kLines));
    const VoiceTable moved = std::move(table);
    ASSERT_EQ(moved.Voices().size(), 5U);
    const Voice& last = moved.Voices()[4];
    EXPECT_EQ(last.row, 4U);
    EXPECT_EQ(last.Numbers(), (VoiceNumbers{0, 113, 16}));
    EXPECT_EQ(last.category, "Organ");
    const std::vector<std::string_view> families(moved.Families().begin(), moved.Families().end());
    EXPECT_EQ(families, (std::vector<std::string_view>{"Panel", "Drums", "XG"}));
    EXPECT_EQ(VoiceTableText(moved.Voices()), TableOf(kLines));
}

TEST(VoiceTable, FindsTheFirstOfEqualRecordsAndKitsApart) {
    const VoiceTable table = ReadVoiceTable(TableOf(kLines));
    EXPECT_EQ(table.Find(false, {0, 112, 0})->name, "Grand \"Live\" Piano");
    EXPECT_EQ(table.Find(true, {0, 112, 0})->name, "Standard Kit");
    EXPECT_EQ(table.Find(false, {127, 127, 127})->name, "Hörner");
    EXPECT_EQ(table.Find(true, {127, 127, 127}), nullptr);
    EXPECT_EQ(table.Find(false, {0, 112, 1}), nullptr);
    EXPECT_EQ(VoiceTable().Find(false, {0, 0, 0}), nullptr);
}

// Editors of other systems write a byte order mark and carriage returns.
TEST(VoiceTable, ReadsWhatEditorsWrite) {
    std::string file = "\xEF\xBB\xBF" + TableOf(kLines);
    for (std::size_t at = 0; (at = file.find('\n', at)) != std::string::npos; at += 2) {
        file.insert(at, 1, '\r');
    }
    EXPECT_EQ(VoiceTableText(ReadVoiceTable(file).Voices()), TableOf(kLines));
}

struct FaultRow {
    const char* what;
    std::string file;
    const Text& reason;
    std::size_t line;
};

class VoiceTableFaultTest : public testing::TestWithParam<FaultRow> {};

TEST_P(VoiceTableFaultTest, IsNamedWithItsLine) {
    try {
        ReadVoiceTable(GetParam().file);
        FAIL() << "read";
    } catch (const VoiceFileError& error) {
        EXPECT_EQ(error.Reason().english, GetParam().reason.english);
        EXPECT_EQ(error.Line(), GetParam().line);
    }
}

std::string Row(const std::string& name) {
    return "GM\tPiano\t0\t0\t0\t" + name + '\n';
}

std::string Repeated(std::size_t times, const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < times; ++i) {
        out += text;
    }
    return out;
}

INSTANTIATE_TEST_SUITE_P(
    Faults, VoiceTableFaultTest,
    testing::Values(
        FaultRow{"empty", "", texts::kTableHeader, 1},
        FaultRow{"two marks", "\xEF\xBB\xBF\xEF\xBB\xBF" + TableOf(""), texts::kTableHeader, 1},
        FaultRow{"carriage return", TableOf(Row("a\rb")), texts::kControlCharacter, 2},
        FaultRow{"cut", TableOf(Row("a") + "GM\tPiano\t0\t0\t1\tBri"), texts::kTableTruncated, 3},
        FaultRow{"five columns", TableOf("GM\tPiano\t0\t0\t0\n"), texts::kColumnCount, 2},
        FaultRow{"seven columns", TableOf(Row("a\tb")), texts::kColumnCount, 2},
        FaultRow{"blank line", TableOf("\n"), texts::kColumnCount, 2},
        FaultRow{"no name", TableOf(Row("a") + Row("")), texts::kEmptyField, 3},
        FaultRow{"128", TableOf("GM\tPiano\t0\t128\t0\ta\n"), texts::kNumberRange, 2},
        FaultRow{"-1", TableOf("GM\tPiano\t-1\t0\t0\ta\n"), texts::kNumberRange, 2},
        FaultRow{"blank", TableOf("GM\tPiano\t0\t0\t 1\ta\n"), texts::kNumberRange, 2},
        FaultRow{"01", TableOf("GM\tPiano\t0\t0\t01\ta\n"), texts::kNumberRange, 2},
        FaultRow{"none", TableOf("GM\tPiano\t\t0\t1\ta\n"), texts::kNumberRange, 2},
        FaultRow{"Latin-1", TableOf(Row("H\xF6rner")), texts::kNotUtf8, 2},
        FaultRow{"NUL", TableOf(Row(std::string("a\0b", 3))), texts::kControlCharacter, 2},
        FaultRow{"C1", TableOf(Row("a\xC2\x85")), texts::kControlCharacter, 2},
        FaultRow{"long line", TableOf(Row(std::string(5'000'000, 'a'))), texts::kLineTooLong, 2},
        FaultRow{"rows", TableOf(Repeated(65'537, Row("a"))), texts::kTooManyRows, 65'538},
        FaultRow{"families", TableOf(Repeated(501, "A\tx\t0\t0\t0\ta\nB\tx\t0\t0\t0\ta\n")),
                 texts::kTooManyFamilies, 1'002},
        FaultRow{"size", std::string(kMostTableBytes + 1, 'a'), texts::kTableTooLarge, 0}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(VoiceFileError, SpeaksBothLanguages) {
    const VoiceFileError error(texts::kColumnCount, 7);
    EXPECT_EQ(error.Message(Language::German),
              "Zeile 7: Die Zeile muss genau sechs Spalten haben.");
    EXPECT_STREQ(error.what(), "Line 7: The line must have exactly six columns.");
    EXPECT_EQ(VoiceFileError(texts::kTableTooLarge).Message(Language::English),
              texts::kTableTooLarge.english);
}

TEST(MakeVoiceTable, KeepsTheOrderOfGroupsAndDropsRepetitions) {
    const VoiceTable table = MakeVoiceTable({{"B", "z", {0, 0, 2}, "late"},
                                             {"B", "c", {0, 0, 1}, "one"},
                                             {"A", "c", {9, 0, 0}, "last family"},
                                             {"B", "c", {0, 0, 1}, "one"},
                                             {"B", "z", {0, 0, 1}, "early"},
                                             {"B", "c", {0, 0, 1}, "another"}});
    EXPECT_EQ(VoiceTableText(table.Voices()), TableOf("B\tz\t0\t0\t1\tearly\nB\tz\t0\t0\t2\tlate\n"
                                                      "B\tc\t0\t0\t1\tone\nB\tc\t0\t0\t1\tanother\n"
                                                      "A\tc\t9\t0\t0\tlast family\n"));
    EXPECT_THROW(MakeVoiceTable({{"A", "c", {0, 0, 0}, "two\nlines"}}), VoiceFileError);
}

TEST(SaveUserTable, ReplacesTheWholeTableOrKeepsIt) {
    const tracksmith::test::TemporaryFolder folder;
    const VoiceTable first = ReadVoiceTable(TableOf(Row("first")));
    const VoiceTable second = ReadVoiceTable(TableOf(Row("second") + Row("third")));
    const auto path = SaveUserTable(folder / "own" / "voices", 40, first);
    EXPECT_EQ(path.filename(), "040-ketron-sd2-sd4.tsv");
    SaveUserTable(folder / "own" / "voices", 40, second);
    EXPECT_EQ(ReadVoiceTableFile(path).Voices().size(), 2U);
    EXPECT_THROW(SaveUserTable(folder / "own", 109, first), VoiceFileError);
    EXPECT_THROW(SaveUserTable(path, 40, first), VoiceFileError); // a file in the folder's place
    EXPECT_EQ(ReadVoiceTableFile(path).Voices().size(), 2U);
    EXPECT_EQ(TableFileName(*FindInstrument("Roland SC-VA (VSTi)")), "083-roland-sc-va-vsti.tsv");
}

} // namespace
} // namespace tracksmith::instruments
