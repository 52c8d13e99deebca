#include "cli_fixture.h"
#include "support/song_assert.h"

namespace tracksmith::cli {
namespace {

struct SetCase {
    std::vector<std::string> options;
    int code;
    /// The track of the result, or a part of what was said.
    const char* expected;
};

test::Bytes TwoVolumes() {
    return test::MidiFileBuilder(1)
        .Track(test::TrackBuilder().Tempo(0, 500'000).End(960))
        .Track(test::TrackBuilder()
                   .Short(10, 0xB2, 7, 90)
                   .Program(0, 2, 24)
                   .Note(10, 2, 60, 90)
                   .NoteOff(480, 2, 60)
                   .Short(0, 0xB2, 7, 40)
                   .End())
        .Build();
}

class SetTest : public CliTest, public testing::WithParamInterface<SetCase> {};

TEST_P(SetTest, ChangesWhatIsInEffectAtTheStart) {
    Put("song.mid", TwoVolumes());
    std::vector<std::string> arguments{"set", At("song.mid"), "--out", At("out.mid")};
    const auto& [options, code, expected] = GetParam();
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(Run(arguments), code) << log_;
    EXPECT_EQ(Exists("out.mid"), code == 0);
    if (code == 0) {
        const test::DecodedSong song(Get("out.mid"));
        EXPECT_EQ(test::Listing(song.song.tracks[1]), expected);
    } else {
        EXPECT_TRUE(Says(expected)) << log_;
    }
    EXPECT_EQ(Get("song.mid"), TwoVolumes());
}

INSTANTIATE_TEST_SUITE_P(
    Set, SetTest,
    testing::Values(
        SetCase{{"--channel", "3", "--volume", "101"},
                0,
                "10 B20765; 10 C218; 20 923C5A; 500 823C40; 500 B20728"},
        SetCase{{"--channel", "3", "--volume", "1", "--pan", "0"}, 1, "--pan"},
        SetCase{{"--channel", "3", "--pan", "0", "--insert", "--transpose", "-1"},
                0,
                "0 B20A00; 10 B2075A; 10 C218; 20 923B5A; 500 823B40; 500 B20728"},
        SetCase{{"--channel", "3", "--voice", "Acoustic Bass"},
                0,
                "10 B2075A; 10 B20000; 10 B22000; 10 C220; 20 923C5A; 500 823C40; 500 B20728"},
        SetCase{{"--channel", "3", "--voice", "flute"}, // not the pan flute
                0,
                "10 B2075A; 10 B20000; 10 B22000; 10 C249; 20 923C5A; 500 823C40; 500 B20728"},
        SetCase{{"--channel", "3", "--voice", "guitar"}, 2, "Several voices match guitar: "},
        SetCase{{"--channel", "3", "--voice", "no such voice"}, 2, "No voice matches"},
        SetCase{{"--channel", "4", "--volume", "9", "--insert"}, 1, "nothing on channel 4"},
        SetCase{{"--channel", "17", "--volume", "9"}, 2, "--channel"},
        SetCase{{"--channel", "3", "--volume", "128"}, 2, "--volume"},
        SetCase{{"--channel", "3"}, 2, "What is to be changed"}));

TEST_F(CliTest, SetWritesNoOriginalUnlessToldTo) {
    Put("song.mid", TwoVolumes());
    const std::vector<std::string> set{"set", At("song.mid"), "-c", "3", "--volume", "5"};
    auto with = [&set](std::vector<std::string> more) {
        more.insert(more.begin(), set.begin(), set.end());
        return more;
    };
    EXPECT_EQ(Run(set), 2);
    EXPECT_EQ(Run(with({"--out", At("song.mid"), "--yes"})), 4);
    EXPECT_EQ(Get("song.mid"), TwoVolumes());
    Put("other.mid", BrokenSong());
    EXPECT_EQ(Run(with({"--out", At("other.mid")})), 4);
    EXPECT_EQ(out_, "");
    EXPECT_EQ(Get("other.mid"), BrokenSong());
    EXPECT_EQ(Run(with({"--out", At("new.mid")})), 0);
    EXPECT_EQ(out_, At("song.mid") + " -> " + At("new.mid") + "\n");
    EXPECT_EQ(Run(with({"--in-place"})), 0) << log_;
    EXPECT_NE(Get("song.mid"), TwoVolumes());
}

} // namespace
} // namespace tracksmith::cli
