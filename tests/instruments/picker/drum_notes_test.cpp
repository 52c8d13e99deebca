#include "instruments/picker/drum_notes.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "instruments/picker/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

constexpr InstrumentId kSc88Pro = 1;
constexpr InstrumentId kGenos = 87;
constexpr InstrumentId kPa1000 = 91;

const DrumNotes& Shipped() {
    static const DrumNotes notes = DrumNotes::ReadFile(
        std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "data" / "drums" / "notes.tsv");
    return notes;
}

TEST(DrumNotes, NameTheNotesOfAKit) {
    const auto name = [](InstrumentId id, VoiceNumbers kit, std::size_t note) {
        return Shipped().NotesOf(id, kit).names.at(note);
    };
    EXPECT_EQ(name(kGenos, {127, 0, 0}, 13), "Surdo Mute");
    EXPECT_EQ(name(kGenos, {126, 0, 1}, 36), "Phone Call");
    EXPECT_EQ(name(kSc88Pro, {5, 3, 50}, 40), "Standard 1 Kick 1");
    EXPECT_EQ(name(kPa1000, {120, 0, 0}, 36), "Bass Drum 1");
    EXPECT_EQ(name(kPa1000, {120, 0, 0}, 34), "");
    EXPECT_TRUE(Shipped().NotesOf(kGenos, {127, 0, 0}).isExact);
    EXPECT_TRUE(Shipped().NotesOf(kPa1000, {120, 0, 0}).isExact);
    const KitNotes other = Shipped().NotesOf(kGenos, {127, 0, 91});
    EXPECT_FALSE(other.isExact);
    EXPECT_EQ(other.names[38], "Acoustic Snare");
    EXPECT_FALSE(Shipped().NotesOf(kPa1000, {120, 0, 25}).isExact);
    const KitNotes effects = Shipped().NotesOf(kGenos, {126, 0, 99});
    EXPECT_TRUE(std::ranges::all_of(effects.names, &std::string_view::empty));
    EXPECT_EQ(DrumNotes().NotesOf(kGenos, {127, 0, 0}).names[36], "");
}

struct FaultRow {
    const char* file;
    std::size_t line;
};

class DrumNotesFaultTest : public testing::TestWithParam<FaultRow> {};

TEST_P(DrumNotesFaultTest, IsNamedWithItsLine) {
    try {
        const std::string header = "set\tmsb\tprogram\tkit\tnote\tname\n";
        const std::string file = GetParam().file;
        const DrumNotes notes(file.starts_with("set") ? file : header + file);
        EXPECT_EQ(GetParam().line, 0U) << "read";
        EXPECT_EQ(notes.NotesOf(kPa1000, {120, 0, 0}).names[36], "a");
    } catch (const VoiceFileError& error) {
        EXPECT_EQ(error.Line(), GetParam().line);
        EXPECT_EQ(error.Reason().english, texts::kDrumNotesFault.english);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DrumNotesFaultTest,
    testing::Values(FaultRow{"GM\t0\t0\tk\t36\ta", 0},
                    FaultRow{"set\tmsb\tprogram\tkit\tnote\tname\r\nGM\t0\t0\tk\t36\ta\r\n", 0},
                    FaultRow{"set", 1}, FaultRow{"set\tmsb\n", 1},
                    FaultRow{"XY\t0\t0\tk\t36\ta\n", 2},
                    FaultRow{"GM\t0\t0\tk\t36\ta\nGM\t0\t128\tk\t36\ta\n", 3},
                    FaultRow{"GM\t0\t0\tk\t128\ta\n", 2}, FaultRow{"GM\t0\t0\tk\t1x\ta\n", 2},
                    FaultRow{"GM\t-1\t0\tk\t36\ta\n", 2}, FaultRow{"GM\t0\t0\tk\t36\t\n", 2},
                    FaultRow{"GM\t0\t0\tk\t36\n", 2}, FaultRow{"GM\t0\t0\tk\t36\ta\tb\n", 2},
                    FaultRow{"GM\t0\t0\tk\t36\t\xFF\n", 1}, FaultRow{"\n", 2}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(DrumNotes, AMissingFileIsTold) {
    EXPECT_THROW(DrumNotes::ReadFile("/nowhere/notes.tsv"), VoiceFileError);
}

TEST(DrumEditorTitle, SpeaksBothLanguages) {
    EXPECT_EQ(texts::DrumEditorTitle(1, "Rock Kit", 9, Language::English),
              "show 1. Drum Editor - \"Rock Kit\" on midi channel 10");
    EXPECT_EQ(texts::DrumEditorTitle(3, "Rock Kit", 0, Language::German),
              "zeige 3. Drum Editor - \"Rock Kit\" auf Midikanal 1");
}

} // namespace
} // namespace tracksmith::instruments
