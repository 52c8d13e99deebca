#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "app/health/note_figure.h"
#include "app/health/repair.h"
#include "app/load_sequence.h"

namespace tracksmith::health {
namespace {

using namespace test;

// A channel as good as it gets: bank, program, volume, then the notes.
TrackBuilder Good(int channel) {
    return TrackBuilder()
        .Short(0, 0xB0 | channel, 0, 0)
        .Program(0, channel, 5)
        .Short(0, 0xB0 | channel, 7, 100);
}

const Bytes kGmOn{0x7E, 0x7F, 0x09, 0x01, 0xF7};

struct Case {
    const char* what;
    TrackBuilder track;
    const char* found; // "rule channel count tick", joined by "; "
    const char* left;  // after all repairs
};

void PrintTo(const Case& each, std::ostream* out) {
    *out << each.what;
}

class HealthTest : public testing::TestWithParam<Case> {
protected:
    void Open(const Bytes& file) {
        app::OpenMidiData(session_, file, "song.mid", host_);
        ASSERT_EQ(song::CheckSong(session_.Song()), "");
    }
    // In steps as small as can be, which must not matter.
    HealthReport Check() {
        HealthCheck check(session_.Work(), options_);
        while (!check.Step(1)) {
        }
        return check.Take();
    }
    std::int64_t CountOf(Rule rule) {
        std::int64_t count = 0;
        for (const Finding& finding : Check().findings) {
            count += finding.rule == rule ? finding.count : 0;
        }
        return count;
    }
    std::string Found() {
        std::string text;
        const std::vector<Finding> findings = Check().findings;
        for (const Finding& finding : findings) {
            text += (text.empty() ? "" : "; ") + std::string(RuleName(finding.rule)) + " " +
                    (finding.channel == kAllChannels ? "all" : std::to_string(finding.channel)) +
                    " " + std::to_string(finding.count) + " " +
                    (finding.ticks.empty() ? "-" : std::to_string(finding.ticks.front()));
            for (const Language language : {Language::German, Language::English}) {
                EXPECT_NE(Title(finding, "X", language), "");
                EXPECT_NE(Explanation(finding, language), "");
                EXPECT_EQ(WhatWouldChange(finding, language).empty(), !finding.repairable);
                EXPECT_FALSE(finding.repairable && RepairText(finding.rule).In(language).empty());
            }
        }
        return text;
    }
    Bytes Saved() {
        const auto bytes = session_.Encoder().Format1(session_.Song(), {}, host_);
        return {bytes.begin(), bytes.end()};
    }

    session::Session session_;
    RecordingMessageHost host_;
    HealthOptions options_;
};

TEST_P(HealthTest, FindsRepairsAndTakesBack) {
    Open(MidiFileBuilder().Track(TrackBuilder(GetParam().track).End()).Build());
    EXPECT_EQ(Found(), GetParam().found);
    const Bytes before = Saved();
    const bool anything = Check().Repairable() > 0;
    const bool changed = RepairAll(session_, options_, host_) > 0;
    EXPECT_EQ(changed, anything);
    EXPECT_EQ(song::CheckSong(session_.Song()), "");
    EXPECT_EQ(Found(), GetParam().left);
    EXPECT_EQ(RepairAll(session_, options_, host_), 0);
    if (changed) {
        EXPECT_NE(Saved(), before);
        session_.TakeBackLastChange(host_);
        EXPECT_EQ(Found(), GetParam().found);
    }
    EXPECT_EQ(Saved(), before);
}

INSTANTIATE_TEST_SUITE_P(
    All, HealthTest,
    testing::Values(
        Case{"Good", Good(1).Note(0, 1, 60, 9).NoteOff(99, 1, 60), "", ""},
        Case{"Empty", TrackBuilder(), "", ""},
        Case{"WithoutEnd", Good(1).Note(7, 1, 60, 9).Note(90, 1, 62, 9).NoteOff(99, 1, 62),
             "noteWithoutEnd 1 1 7", ""},
        Case{"WithoutEndInside", Good(1).Note(0, 1, 60, 9).Note(90, 1, 60, 9).NoteOff(99, 1, 60),
             "noteWithoutEnd 1 1 90", ""},
        Case{"NeverAnyEnd",
             Good(1).Note(0, 1, 60, 9).Note(90, 1, 60, 9).Note(90, 1, 60, 9).Note(90, 1, 60, 9),
             "noteWithoutEnd 1 4 0", ""},
        Case{"OnlyEnds", TrackBuilder().NoteOff(5, 3, 60).NoteOff(5, 3, 60),
             "noteWithoutBeginning 3 2 5", ""},
        Case{"Overlap",
             Good(1).Note(0, 1, 60, 9).Note(90, 1, 60, 9).NoteOff(9, 1, 60).NoteOff(99, 1, 60),
             "overlaps 1 1 90", ""},
        Case{"Short",
             Good(9).Note(0, 9, 36, 9).NoteOff(1, 9, 36).Note(4, 9, 36, 9).NoteOff(1, 9, 36),
             "shortNotes 9 2 0", ""},
        Case{"LeftOn",
             Good(1)
                 .Note(0, 1, 60, 9)
                 .NoteOff(99, 1, 60)
                 .Short(0, 0xB1, 64, 127)
                 .Short(7, 0xB1, 64, 100)
                 .Short(1, 0xE1, 0, 70),
             "sustainAtEnd 1 1 99; bendAtEnd 1 1 107", ""},
        Case{"HalfPedal", Good(1).Note(0, 1, 60, 9).NoteOff(99, 1, 60).Short(0, 0xB1, 64, 64),
             "sustainAtEnd 1 1 99", ""},
        Case{"AlmostReleased", Good(1).Note(0, 1, 60, 9).NoteOff(99, 1, 60).Short(0, 0xB1, 64, 63),
             "", ""},
        Case{"Released",
             Good(1).Short(0, 0xB1, 64, 127).Short(0, 0xE1, 0, 9).Short(7, 0xB1, 121, 0), "", ""},
        Case{"NoBankNoVolume", TrackBuilder().Program(0, 2, 5).Note(0, 2, 60, 9).NoteOff(99, 2, 60),
             "programWithoutBank 2 1 0; noVolume 2 1 0", "programWithoutBank 2 1 0"},
        Case{"BankOfReset", TrackBuilder().Sysex(0, kGmOn).Program(0, 2, 5).Short(0, 0xB2, 7, 9),
             "", ""},
        Case{"NoProgram",
             TrackBuilder()
                 .Short(0, 0xB2, 7, 9)
                 .Note(3, 2, 60, 9)
                 .NoteOff(99, 2, 60)
                 .Program(0, 2, 5),
             "noProgram 2 1 3; programWithoutBank 2 1 102",
             "noProgram 2 1 3; programWithoutBank 2 1 102"},
        Case{"VolumeBehindEachReset",
             TrackBuilder()
                 .Sysex(0, kGmOn)
                 .Program(0, 2, 5)
                 .Note(0, 2, 60, 9)
                 .NoteOff(99, 2, 60)
                 .Sysex(9, kGmOn)
                 .Program(0, 2, 5)
                 .Note(9, 2, 60, 9)
                 .NoteOff(99, 2, 60),
             "noVolume 2 1 0; severalResets all 1 108", "severalResets all 1 108"},
        Case{"Wiped",
             Good(2)
                 .Sysex(9, kGmOn)
                 .Sysex(9, kGmOn)
                 .Short(0, 0xB2, 7, 90)
                 .Note(9, 2, 60, 9)
                 .NoteOff(99, 2, 60),
             "settingsBeforeReset 2 1 27; severalResets all 1 18",
             "settingsBeforeReset 2 1 27; severalResets all 1 18"},
        Case{"Texts",
             TrackBuilder()
                 .Text(0, 5, "gr\xFC\xDF")
                 .Text(1, 5, "\x81")
                 .Text(1, 1, "\xC3\xBC")
                 .Text(1, 3, "\xCF\xF0\xE8\xE2\xE5\xF2"),
             "unclearEncoding all 2 1", "unclearEncoding all 2 1"}),
    [](const auto& each) { return std::string(each.param.what); });

TEST_F(HealthTest, NamesWhatTheInstrumentLacksAndAddsItsBank) {
    const instruments::VoiceTables tables(
        {std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "data" / "voices"});
    const instruments::Instrument* korg = instruments::FindInstrument("Korg Pa4X Musikant");
    ASSERT_NE(korg, nullptr);
    options_.voices = &tables;
    options_.instrument = korg->id;
    Open(MidiFileBuilder()
             .Track(TrackBuilder().Program(0, 2, 5).Short(0, 0xB3, 0, 99).Program(0, 3, 5).End())
             .Build());
    const std::string found = Found();
    EXPECT_NE(found.find("unknownVoice 3 1 0"), std::string::npos) << found;
    // Its bank 0 is not that of General MIDI, where songs without banks are made for.
    const std::vector<Finding> findings = Check().findings;
    const auto bank = std::ranges::find(findings, Rule::ProgramWithoutBank, &Finding::rule);
    ASSERT_NE(bank, findings.end());
    EXPECT_EQ(bank->severity, Severity::Warning);
    EXPECT_EQ(RepairAll(session_, options_, host_), 2);
    EXPECT_EQ(Found().find("programWithoutBank"), std::string::npos);
}

TEST_F(HealthTest, TellsManyNotesAndWhatLoadingDid) {
    TrackBuilder track = Good(0);
    track.Note(0, 0, 100, 9).NoteOff(30, 0, 100); // over by then, and counts no more
    for (int key = 0; key < 70; ++key) {
        track.Note(0, 0, key, 9);
    }
    for (int key = 0; key < 70; ++key) {
        track.NoteOff(key == 0 ? 5 : 0, 0, key);
    }
    session_.Options().noteLength = {20};
    Open(MidiFileBuilder().Track(track.End()).Build());
    EXPECT_EQ(Found(), "lengthenedNotes all 70 -; manyNotes all 1 30");
    EXPECT_EQ(Check().findings.back().value, 70);
    EXPECT_EQ(Title(Check().findings.back(), "", Language::English), "70 notes at once");
}

TEST_F(HealthTest, RepairsOnlyWhatIsAskedFor) {
    Open(MidiFileBuilder()
             .Track(Good(1).NoteOff(9, 1, 60).Note(1, 1, 60, 9).End())
             .Track(Good(4).NoteOff(9, 4, 60).End())
             .Build());
    ASSERT_EQ(Found(),
              "noteWithoutEnd 1 1 10; noteWithoutBeginning 1 1 9; noteWithoutBeginning 4 "
              "1 9");
    const std::vector<Finding> findings = Check().findings;
    EXPECT_EQ(Repair(session_, std::span(findings).subspan(1, 1), options_, host_), 1);
    EXPECT_EQ(Found(), "noteWithoutEnd 1 1 10; noteWithoutBeginning 4 1 9");
    EXPECT_TRUE(session_.Modified());
}

std::string Shown(const std::vector<FigureNote>& notes) {
    std::string text;
    for (const FigureNote& note : notes) {
        text += (text.empty() ? "" : " ") + std::to_string(note.key) + ":" +
                std::to_string(note.begin) + "-" +
                (note.end == FigureNote::kNoEnd ? "" : std::to_string(note.end)) +
                (note.changed ? "!" : "");
    }
    return text;
}

// What is shown before the repair is what the repair then does.
TEST_F(HealthTest, ShowsNotesBeforeAndAfterARepair) {
    struct Figure {
        TrackBuilder track;
        Rule rule;
        const char* now;
        const char* after;
    };
    const std::vector<Figure> figures{
        {TrackBuilder().Note(0, 1, 60, 9).Note(90, 1, 60, 9).NoteOff(9, 1, 60).NoteOff(99, 1, 60),
         Rule::Overlaps, "60:0-99! 60:90-198", "60:0-90! 60:90-198"},
        {TrackBuilder().Note(480, 1, 60, 9).Note(90, 1, 62, 9).NoteOff(30, 1, 62),
         Rule::NoteWithoutEnd, "60:480-! 62:570-600", "60:480-600! 62:570-600"},
        {TrackBuilder().Note(0, 1, 62, 9).NoteOff(90, 1, 62).Note(480, 1, 60, 9).End(480),
         Rule::NoteWithoutEnd, "62:0-90 60:570-!", "62:0-90 60:570-590!"}, // the last event
        {TrackBuilder().NoteOff(5, 1, 60).Note(9, 1, 64, 9).NoteOff(99, 1, 64),
         Rule::NoteWithoutBeginning, "64:14-113 60:5-5!", "64:14-113"},
        {TrackBuilder().Note(0, 1, 60, 9).NoteOff(3, 1, 60).Note(900, 1, 60, 9).NoteOff(99, 1, 60),
         Rule::ShortNotes, "60:0-3!", "60:0-20!"},
        {TrackBuilder().Note(0, 1, 60, 9).NoteOff(30, 1, 60), Rule::NoVolume, "", ""}};
    for (const auto& [track, rule, now, after] : figures) {
        Open(MidiFileBuilder().Track(TrackBuilder(track).End()).Build());
        const std::vector<Finding> findings = Check().findings;
        const auto found = std::ranges::find(findings, rule, &Finding::rule);
        ASSERT_NE(found, findings.end()) << now;
        const NoteFigure figure = FigureOf(session_.Song(), *found, found->ticks.front(), options_);
        EXPECT_EQ(Shown(figure.now), now);
        EXPECT_EQ(Shown(figure.after), after);
        Repair(session_, {&*found, 1}, options_, host_);
        EXPECT_EQ(CountOf(rule), 0);
    }
}

// Whatever the song: no crash, nothing broken, and one run of repairs is enough.
TEST_F(HealthTest, OneRepairSufficesForRandomSongs) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        constexpr int kDivisions[] = {1, 480, 30'000};
        TrackBuilder track;
        for (int i = dice.Roll(200); i >= 0; --i) {
            const auto delta = static_cast<std::uint64_t>(dice.Roll(3) * dice.Roll(30));
            const int channel = dice.Roll(2);
            const int key = 60 + dice.Roll(2);
            switch (dice.Roll(12)) {
                case 0:
                    track.Short(delta, 0xB0 | channel, dice.Roll(128), dice.Roll(128));
                    break;
                case 1:
                    track.Short(delta, 0xE0 | channel, 0, 64 * dice.Roll(2));
                    break;
                case 2:
                    track.Sysex(delta, kGmOn).Program(0, channel, dice.Roll(128));
                    break;
                default:
                    dice.Roll(2) == 0 ? track.Note(delta, channel, key, 90)
                                      : track.NoteOff(delta, channel, key);
            }
        }
        Open(MidiFileBuilder(dice.Roll(2), kDivisions[dice.Roll(3)]).Track(track.End()).Build());
        options_.instrument =
            seed % 2 == 0 ? std::optional(instruments::kGm2Soundset) : std::nullopt;
        const std::int64_t wiped = CountOf(Rule::SettingsBeforeReset);
        RepairAll(session_, options_, host_);
        EXPECT_EQ(song::CheckSong(session_.Song()), "");
        EXPECT_EQ(Check().Repairable(), 0U) << Found();
        EXPECT_LE(CountOf(Rule::SettingsBeforeReset), wiped); // no reset wipes what was put in
    }
}

} // namespace
} // namespace tracksmith::health
