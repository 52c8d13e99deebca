#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli_fixture.h"

namespace tracksmith::cli {
namespace {

using test::MidiFileBuilder;
using test::TrackBuilder;

TrackBuilder Start() {
    return TrackBuilder().Short(0, 0xB0, 0, 0).Program(0, 0, 5).Short(0, 0xB0, 7, 100);
}

test::Bytes Good() {
    return MidiFileBuilder().Track(Start().Note(0, 0, 60, 9).NoteOff(99, 0, 60).End()).Build();
}
// Only a hint.
test::Bytes Short() {
    return MidiFileBuilder().Track(Start().Note(0, 0, 60, 9).NoteOff(3, 0, 60).End()).Build();
}
test::Bytes Hanging() {
    return MidiFileBuilder().Track(Start().Note(480, 0, 60, 9).End()).Build();
}

class CheckTest : public CliTest {};

TEST_F(CheckTest, ExitCodesFollowTheWorstFinding) {
    Put("good.mid", Good());
    Put("short.mid", Short());
    Put("sub/hanging.mid", Hanging());
    EXPECT_EQ(Run({"check", At("good.mid"), At("short.mid")}), 0) << out_;
    EXPECT_EQ(Run({"check", "--strict", At("good.mid")}), 0);
    EXPECT_EQ(Run({"check", "--strict", At("short.mid")}), 1);
    EXPECT_EQ(Run({"check", At("")}), 1); // folders with their subfolders
    EXPECT_NE(out_.find("hanging.mid: 1 error\n  Error     1  001.02.000  Note without end\n"),
              std::string::npos)
        << out_;
    EXPECT_EQ(Run({"check", "--instrument", "no such", At("good.mid")}), 2);
    EXPECT_EQ(Run({"check", "--repair", At("good.mid")}), 2);
    EXPECT_EQ(Run({"check", "--out", At("o"), At("good.mid")}), 2);
    EXPECT_FALSE(Exists("o"));
    Put("bad.mid", BrokenSong());
    EXPECT_EQ(Run({"check", At("bad.mid")}), 3);
    EXPECT_EQ(Run({"check", At("bad.mid"), At("good.mid")}), 5);
}

TEST_F(CheckTest, FindingsAreSetInColumns) {
    const test::Bytes reset{0x7E, 0x7F, 0x09, 0x01, 0xF7};
    Put("song.mid", MidiFileBuilder(0)
                        .Track(TrackBuilder()
                                   .Sysex(0, reset)
                                   .Sysex(10, reset)
                                   .Sysex(10, reset)
                                   .Program(0, 0, 5)
                                   .Short(0, 0xB0, 7, 100)
                                   .Note(0, 0, 60, 9)
                                   .Note(480, 0, 64, 9)
                                   .NoteOff(480, 9, 36)
                                   .End())
                        .Build());
    EXPECT_EQ(Run({"check", At("song.mid")}), 1);
    EXPECT_EQ(out_, At("song.mid") +
                        ": 1 error, 2 hints\n"
                        "  Error     1  001.01.020  Note without end (2)\n"
                        "  Hint     10  001.03.020  Note-off without a note\n"
                        "  Hint      -  001.01.010  Several resets (2)\n");
    ASSERT_EQ(Run({"check", At("song.mid"), "--json"}), 1);
    EXPECT_EQ(nlohmann::json::parse(out_)["findings"][2], nlohmann::json::parse(R"({
        "rule": "severalResets", "severity": "hint", "channel": null, "count": 2, "tick": 10,
        "position": "001.01.010", "ticks": [10, 20], "text": "Several resets",
        "repairable": false})"));
    EXPECT_EQ(Run({"check", At("song.mid"), "--repair", "--out", At("out")}), 0);
    EXPECT_EQ(log_, At("song.mid") + " -> " + At("out/song.mid") + "\n");
    EXPECT_EQ(Run({"check", At("song.mid"), "--repair", "--out", At("out")}), 4); // it exists
    EXPECT_EQ(Run({"check", At("song.mid"), "--repair", "--out", At("out"), "-y", "-q"}), 0);
    EXPECT_EQ(log_, "");
}

TEST_F(CheckTest, RepairsIntoAnotherFolderAndReports) {
    Put("in/sub/hanging.mid", Hanging());
    Put("in/short.mid", Short());
    const test::Bytes before = Get("in/sub/hanging.mid");
    EXPECT_EQ(Run({"check", "--repair", "--out", At("out"), "--report", At("rep"), At("in")}), 0);
    EXPECT_EQ(Get("in/sub/hanging.mid"), before);
    const test::Bytes report = Get("rep/sub/hanging_NoteOnOff.txt");
    EXPECT_EQ(std::string(report.begin(), report.end()),
              "Found 1 Note-Ons without Note-Offs,\nCh.01, Pos. 001.02.000, Note C3(60)\n");
    EXPECT_FALSE(Exists("rep/short_NoteOnOff.txt"));
    EXPECT_EQ(Run({"check", "--strict", At("out")}), 0) << out_;
    EXPECT_EQ(Run({"check", "--repair", "--out", At("in"), At("in")}), 5); // would overwrite
    EXPECT_EQ(Get("in/sub/hanging.mid"), before);
}

TEST_F(CheckTest, LooksForVoicesThatTheInstrumentLacks) {
    Put("song.mid", MidiFileBuilder()
                        .Track(TrackBuilder()
                                   .Short(0, 0xB0, 0, 99)
                                   .Short(0, 0xB0, 32, 99)
                                   .Program(0, 0, 5)
                                   .Short(0, 0xB0, 7, 100)
                                   .Note(0, 0, 60, 9)
                                   .NoteOff(99, 0, 60)
                                   .End())
                        .Build());
    EXPECT_EQ(Run({"check", At("song.mid")}), 0) << out_;
    EXPECT_EQ(Run({"check", "--instrument", "Yamaha Genos", At("song.mid")}), 1);
    EXPECT_TRUE(Shows("  1  001.01.000  Voice that Yamaha Genos does not have\n")) << out_;
}

TEST_F(CheckTest, SaysTheSameAsJson) {
    Put("hanging.mid", Hanging());
    EXPECT_EQ(Run({"check", "--json", At("hanging.mid"), At("none.mid")}), 5);
    std::istringstream lines(out_);
    std::string line;
    std::getline(lines, line);
    const auto json = nlohmann::json::parse(line);
    EXPECT_EQ(json["schema"], 1);
    EXPECT_EQ(json["ok"], true);
    const auto& finding = json["findings"].at(0);
    EXPECT_EQ(finding["rule"], "noteWithoutEnd");
    EXPECT_EQ(finding["severity"], "error");
    EXPECT_EQ(finding["channel"], 1);
    EXPECT_EQ(finding["tick"], 480);
    EXPECT_EQ(finding["position"], "001.02.000");
    EXPECT_EQ(finding["repairable"], true);
    std::getline(lines, line);
    EXPECT_EQ(nlohmann::json::parse(line)["ok"], false);
}

TEST_F(CheckTest, OtherCommandsLengthenShortNotesUnlessToldNot) {
    Put("short.mid", Short());
    const auto converted = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"convert", At("short.mid"), "--out", At("o"), "-y"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(Run(arguments), 0) << log_;
        return Get("o/short.mid");
    };
    const test::Bytes asIs = converted({"--min-length", "off"});
    const test::Bytes ten = converted({"--min-length", "10"});
    EXPECT_TRUE(Says("1 very short notes lengthened")) << log_;
    EXPECT_NE(asIs, ten);
    EXPECT_EQ(converted({"--min-length", "0"}), asIs);
    EXPECT_NE(converted({"--min-length", "9999"}), ten);
    EXPECT_EQ(Run({"convert", At("short.mid"), "--min-length", "10000", "--out", At("o")}), 2);
    EXPECT_NE(converted({}), ten);
    EXPECT_EQ(Run({"convert", At("short.mid"), "--min-length", "much"}), 2);
    EXPECT_EQ(Run({"check", "--min-length", "9", At("short.mid")}), 2);
}

} // namespace
} // namespace tracksmith::cli
