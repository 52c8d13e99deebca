#include "cli_fixture.h"
#include "support/song_assert.h"

namespace tracksmith::cli {
namespace {

struct RangeCase {
    std::vector<std::string> options;
    int code;
    /// The track of the result, or a part of what was said.
    const char* expected;
};

/// Measures of 400 ticks; a message to the instrument in the second.
test::Bytes FourMeasures() {
    return test::MidiFileBuilder(1, 100)
        .Track(test::TrackBuilder().Tempo(0, 500'000).End())
        .Track(test::TrackBuilder()
                   .Note(0, 3, 60, 90)
                   .NoteOff(500, 3, 60)
                   .Short(0, 0xB3, 7, 80)
                   .Sysex(0, {0x43, 0x10, 0x4C, 2, 1, 0, 1, 0, 0xF7})
                   .Note(700, 3, 64, 90)
                   .NoteOff(100, 3, 64)
                   .End())
        .Build();
}

class RangeTest : public CliTest, public testing::WithParamInterface<RangeCase> {};

TEST_P(RangeTest, ChangesMeasures) {
    Put("song.mid", FourMeasures());
    const auto& [options, code, expected] = GetParam();
    std::vector<std::string> arguments{"range", options.front(), At("song.mid"), "--out",
                                       At("out.mid")};
    arguments.insert(arguments.end(), options.begin() + 1, options.end());
    EXPECT_EQ(Run(arguments), code) << log_;
    EXPECT_EQ(Exists("out.mid"), code == 0);
    if (code == 0) {
        const test::DecodedSong song(Get("out.mid"));
        EXPECT_EQ(test::Listing(song.song.tracks[1]), expected);
    } else {
        EXPECT_TRUE(Says(expected)) << log_;
    }
    EXPECT_EQ(Get("song.mid"), FourMeasures());
}

INSTANTIATE_TEST_SUITE_P(
    Range, RangeTest,
    testing::Values(
        RangeCase{{"delete", "--from", "2:01", "--to", "3"},
                  0,
                  "0 933C5A; 399 833C5A; 401 B30750; 800 93405A; 900 834040"},
        RangeCase{
            {"copy", "--from", "1:02", "--to", "2", "--dest", "3:03", "--no-state"},
            0,
            "0 933C5A; 500 833C40; 500 B30750; 500 F0 43104C0201000100F7; 1000 933C5A; 1299 833C5A; "
            "1500 93405A; 1600 834040"},
        RangeCase{
            {"transpose", "--from", "4", "--to", "4:02", "--semitones", "-2"},
            0,
            "0 933C5A; 500 833C40; 500 B30750; 500 F0 43104C0201000100F7; 1200 933E5A; 1300 833E40"},
        RangeCase{{"delete", "--from", "1:1", "--to", "3"}, 2, "The \"From\" position is too low!"},
        RangeCase{{"delete", "--from", "9", "--to", "10"}, 2, "\"End of song = 004.02.010\"!"},
        RangeCase{{"copy", "--from", "2", "--to", "3"}, 2, "--dest"},
        RangeCase{{"transpose", "--from", "2", "--to", "3", "--semitones", "x"},
                  1,
                  "Please enter the semitones value"},
        RangeCase{{"transpose", "--from", "2", "--to", "3", "--semitones", "1", "--channel", "5"},
                  1,
                  "The MIDI channel 5 can't be transposed."},
        RangeCase{{"transpose", "--from", "2", "--to", "3", "--semitones", "1", "--channel", "10"},
                  2,
                  "Channel 10 plays drums"},
        RangeCase{{"transpose", "--from", "2", "--to", "3", "--semitones", "1", "--channel", "17"},
                  2,
                  "--channel"}));

// The notes of a MegaVoice above B6 are noises, which stay where they are.
TEST_F(CliTest, RangeKnowsTheVoicesOfTheInstrument) {
    Put("song.mid", test::MidiFileBuilder(1, 100)
                        .Track(test::TrackBuilder().Tempo(0, 500'000).End())
                        .Track(test::TrackBuilder()
                                   .Short(0, 0xB3, 0, 8)
                                   .Short(0, 0xB3, 32, 0)
                                   .Program(0, 3, 1)
                                   .Note(400, 3, 60, 90)
                                   .NoteOff(50, 3, 60)
                                   .Note(0, 3, 96, 90)
                                   .NoteOff(50, 3, 96)
                                   .End(300))
                        .Build());
    const auto moved = [this](std::vector<std::string> more) {
        more.insert(more.begin(), {"range", "transpose", At("song.mid"), "--from", "2", "--to", "3",
                                   "--semitones", "1", "--yes", "--out", At("out.mid")});
        EXPECT_EQ(Run(more), 0) << log_;
        const test::DecodedSong song(Get("out.mid"));
        return test::Listing(song.song.tracks[1]);
    };
    const std::string voice = "0 B30008; 0 B32000; 0 C301; 400 933D5A; 450 833D40; ";
    EXPECT_EQ(moved({}), voice + "450 93615A; 500 836140");
    EXPECT_EQ(moved({"--instrument", "Yamaha Tyros"}), voice + "450 93605A; 500 836040");
}

TEST_F(CliTest, RangeTellsWhatItDidAndKeepsTheOriginal) {
    Put("song.mid", FourMeasures());
    const std::vector<std::string> range{"range", "delete", At("song.mid"), "--from",
                                         "2:01",  "--to",   "3:01",         "--json"};
    const auto with = [&range](std::vector<std::string> more) {
        more.insert(more.begin(), range.begin(), range.end());
        return more;
    };
    EXPECT_EQ(Run(range), 2); // where to?
    EXPECT_EQ(Run(with({"--out", At("song.mid"), "--yes"})), 4);
    Put("other.mid", BrokenSong());
    EXPECT_EQ(Run(with({"--out", At("other.mid")})), 4);
    EXPECT_EQ(out_, "");
    EXPECT_EQ(Get("other.mid"), BrokenSong());
    EXPECT_EQ(Run(with({"--in-place", "--dry-run"})), 0) << log_;
    for (const char* part : {"\"tool\":\"delete\"", "\"measures\":1", "\"notes\":0",
                             "\"notesEnded\":1", "\"notesBegunAgain\":0", "\"settingsCarried\":1",
                             "\"instrumentMessages\":1", "\"songLength\":999"}) {
        EXPECT_NE(out_.find(part), std::string::npos) << part << " in " << out_;
    }
    EXPECT_EQ(Get("song.mid"), FourMeasures());
    auto text = with({"--in-place", "--dry-run"});
    std::erase(text, "--json");
    EXPECT_EQ(Run(text), 0);
    EXPECT_EQ(log_,
              "Measures: 1, notes: 0\n"
              "At the seam notes end: 1, begin again: 0, settings carried over: 1\n"
              "Messages to instruments that went with the range: 1\n");
    text.emplace_back("--quiet");
    EXPECT_EQ(Run(text), 0);
    EXPECT_EQ(log_, "");
    EXPECT_EQ(Run({"range", "transpose", At("song.mid"), "--from", "4", "--to", "4:02",
                   "--semitones", "1", "--in-place", "-n"}),
              0);
    EXPECT_EQ(log_, "Measures: 1, notes: 1\n");
    EXPECT_EQ(Run({"range"}), 2);
}

} // namespace
} // namespace tracksmith::cli
