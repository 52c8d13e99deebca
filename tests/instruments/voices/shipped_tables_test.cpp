#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "support/temporary_folder.h"

#include "instruments/voices/voice_fixture.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_table_writer.h"
#include "instruments/voices/voice_tables.h"

namespace tracksmith::instruments {
namespace {

using test::ShippedVoices;

std::vector<std::filesystem::path> ShippedFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(ShippedVoices())) {
        files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

class ShippedTableTest : public testing::TestWithParam<std::filesystem::path> {
protected:
    ShippedTableTest() : table_(ReadVoiceTableFile(GetParam())) {}

    VoiceTable table_;
};

TEST_P(ShippedTableTest, IsNamedAfterItsInstrument) {
    const std::string name = GetParam().filename().string();
    const Instrument* instrument = FindInstrument(static_cast<InstrumentId>(std::stoi(name)));
    ASSERT_NE(instrument, nullptr);
    EXPECT_EQ(name, TableFileName(*instrument));
}

// Groups stand together, so that lists show the table as it is; within one the numbers rise.
TEST_P(ShippedTableTest, IsOrderedByGroups) {
    EXPECT_GT(table_.Voices().size(), 100U);
    std::set<std::string_view> families;
    std::set<std::pair<std::string_view, std::string_view>> groups;
    Voice former;
    for (const Voice& voice : table_.Voices()) {
        const bool sameFamily = former.family == voice.family;
        EXPECT_TRUE(sameFamily || families.insert(voice.family).second) << voice.family;
        if (sameFamily && former.category == voice.category) {
            EXPECT_LT(former.Numbers(), voice.Numbers()) << voice.name;
        } else {
            EXPECT_TRUE(groups.emplace(voice.family, voice.category).second) << voice.category;
        }
        former = voice;
    }
}

// Numbers that two families share would name the voice of the first only.
TEST_P(ShippedTableTest, HasEachVoiceUnderItsOwnNumbers) {
    for (const Voice& voice : table_.Voices()) {
        EXPECT_EQ(table_.Find(voice.IsKit(), voice.Numbers()), &voice)
            << voice.family << ' ' << voice.Numbers();
    }
}

TEST_P(ShippedTableTest, HasTextsWithoutStrayBlanks) {
    for (const Voice& voice : table_.Voices()) {
        for (const std::string_view text : {voice.name, voice.family, voice.category}) {
            EXPECT_FALSE(text.starts_with(' ') || text.ends_with(' ')) << '"' << text << '"';
        }
    }
}

TEST_P(ShippedTableTest, IsDocumentedWithItsRows) {
    const auto page = std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "docs" / "voice-tables.md";
    const auto bytes = tracksmith::test::FileBytes(page);
    const std::string text(bytes.begin(), bytes.end());
    const std::string code = GetParam().filename().string().substr(0, 3);
    const std::size_t row = text.find("| " + code + " | ");
    ASSERT_NE(row, std::string::npos);
    std::string rows;
    for (const std::string_view family : table_.Families()) {
        rows.append(rows.empty() ? "| " : ", ").append(family).append(1, ' ');
        rows += std::to_string(std::ranges::count(table_.Voices(), family, &Voice::family));
    }
    const std::string line = text.substr(row, text.find('\n', row) - row);
    EXPECT_NE(line.find(rows + " |"), std::string::npos) << rows;
}

TEST_P(ShippedTableTest, IsWrittenByteForByte) {
    const auto bytes = tracksmith::test::FileBytes(GetParam());
    EXPECT_TRUE(VoiceTableText(table_.Voices()) == std::string(bytes.begin(), bytes.end()));
}

INSTANTIATE_TEST_SUITE_P(Files, ShippedTableTest, testing::ValuesIn(ShippedFiles()),
                         [](const auto& file) {
                             return file.param.filename().string().substr(0, 3);
                         });

TEST(ShippedTables, AllLoadQuickly) {
    const auto begin = std::chrono::steady_clock::now();
    const VoiceTables tables({ShippedVoices()});
    std::size_t loaded = 0;
    for (const Instrument& instrument : Catalogue()) {
        loaded += tables.HasOwnTable(instrument.id) ? 1U : 0U;
        EXPECT_TRUE(tables.Problems(instrument.id, Language::English).empty()) << instrument.name;
    }
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    RecordProperty("milliseconds", std::to_string(took.count()));
    EXPECT_EQ(loaded, ShippedFiles().size());
    EXPECT_EQ(loaded, 28U);
    EXPECT_LT(took.count(), 2'000); // some 10 ms without sanitizers on an idle machine
}

TEST(ShippedTables, GeneralMidiIsThePublishedList) {
    const VoiceTables tables({ShippedVoices()});
    const VoiceTable& gm = *tables.OwnTable(kGmSoundset);
    std::set<int> programs;
    for (const Voice& voice : gm.Voices()) {
        if (!voice.IsKit()) {
            programs.insert(voice.program);
        }
    }
    EXPECT_EQ(programs.size(), 128U);
    // General MIDI System Level 1, Sound Set.
    const std::vector<std::pair<std::uint8_t, std::string_view>> published{
        {0, "Acoustic Grand Piano"},
        {8, "Celesta"},
        {16, "Drawbar Organ"},
        {21, "Accordion"},
        {40, "Violin"},
        {56, "Trumpet"},
        {65, "Alto Sax"},
        {73, "Flute"},
        {80, "Lead 1 (square)"},
        {105, "Banjo"},
        {112, "Tinkle Bell"},
        {127, "Gunshot"}};
    for (const auto& [program, name] : published) {
        EXPECT_EQ(gm.Find(false, {0, 0, program})->name, name) << int{program};
    }
}

} // namespace
} // namespace tracksmith::instruments
