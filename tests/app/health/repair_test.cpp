#include "app/health/repair.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "app/health/note_figure.h"
#include "app/health/text_encoding.h"
#include "app/load_sequence.h"

namespace tracksmith::health {
namespace {

using namespace test;

const Bytes kReset{0x7E, 0x7F, 0x09, 0x01, 0xF7};

/// One rule's repair and what it leaves of the track.
struct Mended {
    const char* name;
    Rule rule;
    TrackBuilder track;
    std::int64_t changes;
    const char* left;
};

class RepairTest : public testing::TestWithParam<Mended> {
protected:
    void Open(std::initializer_list<TrackBuilder> tracks, int division = 480) {
        MidiFileBuilder file(1, division);
        for (const TrackBuilder& track : tracks) {
            file.Track(TrackBuilder(track).End());
        }
        app::OpenMidiData(session_, file.Build(), "song.mid", host_);
    }
    std::vector<Finding> Found(Rule rule) {
        std::vector<Finding> found = CheckHealth(session_.Work(), options_).findings;
        std::erase_if(found, [rule](const Finding& finding) { return finding.rule != rule; });
        return found;
    }
    std::int64_t Mend(Rule rule) {
        const std::vector<Finding> found = Found(rule);
        const std::int64_t changes = Repair(session_, found, options_, host_);
        EXPECT_EQ(song::CheckSong(session_.Song()), "");
        return changes;
    }
    std::string Track(std::size_t index) const { return Listing(session_.Song().tracks[index]); }

    session::Session session_;
    RecordingMessageHost host_;
    HealthOptions options_;
};

TEST_P(RepairTest, ChangesNothingElse) {
    Open({GetParam().track});
    EXPECT_EQ(Mend(GetParam().rule), GetParam().changes);
    EXPECT_EQ(Track(0), GetParam().left);
}

// Ticks of music follow, so that a measure and the song's end can be told apart.
TrackBuilder Long(TrackBuilder track) {
    return track.Note(5'000, 1, 90, 9).NoteOff(500, 1, 90);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, RepairTest,
    testing::Values(
        Mended{"EndsAfterAMeasure", Rule::NoteWithoutEnd, Long(TrackBuilder().Note(7, 1, 60, 9)), 1,
               "7 913C09; 1927 813C40; 5007 915A09; 5507 815A40"},
        Mended{"EndsWithTheMusic", Rule::NoteWithoutEnd,
               TrackBuilder().Note(7, 1, 60, 9).Note(0, 1, 62, 9).NoteOff(99, 1, 62), 1,
               "7 913C09; 7 913E09; 106 813E40; 106 813C40"},
        Mended{"EndsNotTooSoon", Rule::NoteWithoutEnd,
               TrackBuilder().Note(7, 1, 62, 9).NoteOff(95, 1, 62).Note(0, 1, 60, 9), 1,
               "7 913E09; 102 813E40; 102 913C09; 122 813C40"},
        Mended{"EndsWhereTheNextBegins", Rule::NoteWithoutEnd,
               Long(TrackBuilder().Note(0, 1, 60, 9).Note(50, 2, 60, 9).Note(50, 1, 60, 9)), 3,
               "0 913C09; 50 923C09; 100 813C40; 100 913C09; 1970 823C40; 2020 813C40; "
               "5100 915A09; 5600 815A40"},
        Mended{"EndsTheOlderOne", Rule::NoteWithoutEnd,
               TrackBuilder().Note(0, 1, 60, 9).Note(90, 1, 60, 9).NoteOff(99, 1, 60), 1,
               "0 913C09; 90 813C40; 90 913C09; 189 813C40"},
        Mended{
            "RemovesNoteOffs", Rule::NoteWithoutBeginning,
            TrackBuilder().NoteOff(5, 3, 60).Note(5, 3, 60, 9).NoteOff(5, 3, 60).NoteOff(5, 3, 60),
            2, "10 933C09; 15 833C40"},
        Mended{"ShortensOverlaps", Rule::Overlaps,
               TrackBuilder()
                   .Note(0, 1, 60, 9)
                   .Note(90, 1, 60, 9)
                   .NoteOff(9, 1, 60)
                   .NoteOff(99, 1, 60),
               1, "0 913C09; 90 813C40; 90 913C09; 198 813C40"},
        Mended{"LengthensShortNotes", Rule::ShortNotes,
               TrackBuilder()
                   .Note(0, 9, 36, 9)
                   .NoteOff(1, 9, 36)
                   .Note(9, 9, 36, 9)
                   .NoteOff(19, 9, 36)
                   .Note(99, 9, 36, 9)
                   .NoteOff(20, 9, 36),
               2, "0 992409; 10 892440; 10 992409; 30 892440; 128 992409; 148 892440"},
        Mended{"ReleasesThePedal", Rule::SustainAtEnd,
               Long(TrackBuilder()
                        .Short(3, 0xB1, 64, 127)
                        .Short(0, 0xB2, 64, 127)
                        .Short(0, 0xB2, 64, 0)),
               1, "3 B1407F; 3 B2407F; 3 B24000; 5003 915A09; 5503 815A40; 5503 B14000"},
        Mended{"CentresTheBend", Rule::BendAtEnd,
               Long(TrackBuilder().Short(3, 0xE1, 1, 64).Short(0, 0xE0, 0, 64)), 1,
               "3 E10140; 3 E00040; 5003 915A09; 5503 815A40; 5503 E10040"},
        Mended{"InsertsTheVolumeBehindEachReset", Rule::NoVolume,
               TrackBuilder()
                   .Sysex(0, kReset)
                   .Note(5, 1, 60, 9)
                   .NoteOff(9, 1, 60)
                   .Note(5, 1, 60, 9)
                   .NoteOff(9, 1, 60)
                   .Sysex(0, kReset)
                   .Note(9, 1, 60, 9)
                   .NoteOff(9, 1, 60),
               2,
               "0 F0 7E7F0901F7; 5 B10764; 5 913C09; 14 813C40; 19 913C09; 28 813C40; "
               "28 F0 7E7F0901F7; 37 B10764; 37 913C09; 46 813C40"}),
    [](const auto& mended) { return std::string(mended.param.name); });

TEST_F(RepairTest, MeasuresFollowTheDivision) {
    Open({Long(TrackBuilder().Note(7, 1, 60, 9))}, 96);
    EXPECT_EQ(Mend(Rule::NoteWithoutEnd), 1);
    EXPECT_EQ(Track(0), "7 913C09; 391 813C40; 5007 915A09; 5507 815A40");
}

TEST_F(RepairTest, ThePedalIsReleasedWhereItWasPressed) {
    Open({TrackBuilder()
              .Short(0, 0xB1, 64, 127)
              .Short(5, 0xB1, 7, 90)
              .Note(900, 1, 60, 9)
              .NoteOff(90, 1, 60),
          TrackBuilder().Short(3, 0xB1, 64, 127), TrackBuilder().Short(2, 0xB1, 64, 0)});
    EXPECT_EQ(Mend(Rule::SustainAtEnd), 1);
    EXPECT_EQ(Track(1), "3 B1407F; 995 B14000");
}

TEST_F(RepairTest, TheBankOfTheInstrumentGoesInFrontOfTheFirstProgramOnly) {
    options_.instrument = instruments::FindInstrument("Korg Pa4X Musikant")->id;
    Open({TrackBuilder().Program(5, 2, 5).Program(5, 2, 6).Program(5, 3, 6).Short(0, 0xB2, 0, 1)});
    EXPECT_EQ(Mend(Rule::ProgramWithoutBank), 4);
    EXPECT_EQ(Track(0),
              "5 B20079; 5 B22000; 5 C205; 10 C206; 15 B30079; 15 B32000; 15 C306; 15 B20001");
    options_.instrument.reset();
    Open({TrackBuilder().Program(5, 2, 5)});
    EXPECT_EQ(Mend(Rule::ProgramWithoutBank), 0); // nobody knows which
}

TEST_F(RepairTest, FindingsTellHowBadTheyAre) {
    TrackBuilder track;
    track.NoteOff(0, 0, 60).Program(0, 0, 5).Text(0, 5, "\x81").Note(0, 0, 60, 9);
    for (const int controller : {7, 10, 91, 93, 11}) {
        track.Short(0, 0xB0, controller, 90);
    }
    track.Sysex(9, kReset).Sysex(1, kReset).Note(9, 0, 61, 9).NoteOff(2, 0, 61).Note(99, 1, 60, 9);
    track.NoteOff(30, 1, 60).Short(0, 0xB0, 64, 64).Short(0, 0xE0, 127, 0);
    for (int key = 0; key < 64; ++key) { // and one that has no end
        track.Note(key == 0 ? 9 : 0, 2, key, 9);
    }
    Open({track.Note(9, 2, 127, 0)});
    const HealthReport report = CheckHealth(session_.Work(), options_);
    std::string text;
    for (const Finding& finding : report.findings) {
        text += std::string(SeverityName(finding.severity)) + " " +
                std::string(RuleName(finding.rule)) + " " +
                (finding.channel == kAllChannels ? "all" : std::to_string(finding.channel)) + " " +
                std::to_string(finding.value) + "; ";
    }
    EXPECT_EQ(
        text,
        "error noteWithoutEnd 0 0; error noteWithoutEnd 2 0; "
        "warning settingsBeforeReset 0 5; warning sustainAtEnd 0 0; warning bendAtEnd 0 -8065; "
        "warning noProgram 1 0; warning noProgram 2 0; hint programWithoutBank 0 0; "
        "hint noteWithoutBeginning 0 0; hint noteWithoutBeginning 2 0; hint shortNotes 0 0; "
        "hint noVolume 1 0; hint noVolume 2 0; hint severalResets all 0; "
        "hint unclearEncoding all 0; hint manyNotes all 65; ");
    EXPECT_EQ(report.counts, (std::array<std::int64_t, 3>{2, 5, 9}));
    Finding bend = report.findings[0];
    bend.rule = Rule::BendAtEnd;
    bend.value = 100;
    EXPECT_EQ(Title(bend, "", Language::English), "Bend at +100 at the end");
}

// Also where it began with the song.
TEST_F(RepairTest, FindingsNameWhereItBegan) {
    TrackBuilder track;
    track.Note(0, 2, 60, 9).Short(0, 0xB1, 64, 127).Short(0, 0xE1, 0, 70).NoteOff(30, 2, 60);
    track.Short(7, 0xB1, 64, 100).Short(0, 0xE1, 0, 80).Note(0, 2, 60, 9).NoteOff(30, 2, 60);
    Open({track});
    for (const Rule rule : {Rule::SustainAtEnd, Rule::BendAtEnd, Rule::NoProgram, Rule::NoVolume}) {
        const std::vector<Finding> found = Found(rule);
        ASSERT_EQ(found.size(), 1U) << RuleName(rule);
        EXPECT_EQ(found[0].ticks, std::vector{0}) << RuleName(rule);
        EXPECT_EQ(found[0].count, rule == Rule::NoProgram ? 2 : 1) << RuleName(rule);
    }
}

TEST_F(RepairTest, AsManyNotesAsInstrumentsHaveAreNotTooMany) {
    TrackBuilder track;
    for (int key = 0; key < 64; ++key) {
        track.Note(0, 0, key, 9);
    }
    Open({track});
    EXPECT_TRUE(Found(Rule::ManyNotes).empty());
    Open({track.Note(0, 0, 64, 9)});
    EXPECT_EQ(Found(Rule::ManyNotes).size(), 1U);
}

TEST_F(RepairTest, WhatAResetWipedIsToldOnce) {
    TrackBuilder track;
    track.Short(0, 0xB1, 7, 90);
    for (int i = 0; i < 2; ++i) {
        track.Sysex(5, kReset).Note(5, 1, 60, 9).NoteOff(30, 1, 60);
    }
    Open({track});
    const std::vector<Finding> found = Found(Rule::SettingsBeforeReset);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].ticks, std::vector{10});
}

// About a measure around a fault, less around a short note, and only notes of its channel.
TEST_F(RepairTest, TheFigureShowsWhatIsNear) {
    Open({TrackBuilder().TimeSignature(0, 3, 2), TrackBuilder()
                                                     .Note(0, 1, 50, 9)
                                                     .NoteOff(4'000, 1, 50)
                                                     .Note(1'000, 1, 60, 9)
                                                     .Note(0, 2, 61, 9)
                                                     .NoteOff(9, 1, 60)
                                                     .NoteOff(0, 2, 61)
                                                     .Note(100, 1, 64, 9)
                                                     .Note(4'000, 1, 65, 9)
                                                     .NoteOff(500, 1, 65)});
    const auto figure = [&](Rule rule, std::int32_t tick) {
        NoteFigure shown = FigureOf(session_.Song(), Found(rule).at(0), tick, options_);
        std::string text = std::to_string(shown.from) + "-" + std::to_string(shown.to) + ":";
        for (const FigureNote& note : shown.after) {
            text += " " + std::to_string(note.key) + "=" + std::to_string(note.begin) + "-" +
                    std::to_string(note.end) + (note.changed ? "!" : "");
        }
        return text;
    };
    EXPECT_EQ(figure(Rule::ShortNotes, 5'000), "4910-5271: 60=5000-5020! 64=5109-2147483647");
    EXPECT_EQ(figure(Rule::NoteWithoutEnd, 5'109), "4389-7269: 60=5000-5009 64=5109-7029!");
    EXPECT_EQ(figure(Rule::ShortNotes, 10), "0-281: 50=0-4000");
}

TEST(TextEncodingTest, KnowsWhatCanBeRead) {
    for (const char* clear : {"", "plain", "gr\xFC\xDF", "\xFC", "\xFC\xDF", "\x84gruen\xFC\x93",
                              "\xC3\xBC\xC3\xBC", "azZ\xFC\xFC\xFC", "AZz\xFC\xFC\xFC"}) {
        EXPECT_FALSE(IsUnclearText(clear)) << clear;
    }
    for (const char* unclear : {"\x81", "gr\x8F", "\xCF\xF0\xE8", "ab`{@[\xFC\xFC\xFC"}) {
        EXPECT_TRUE(IsUnclearText(unclear)) << unclear;
    }
}

} // namespace
} // namespace tracksmith::health
