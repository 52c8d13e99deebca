#include "cli_fixture.h"
#include "support/song_assert.h"

namespace tracksmith::cli {
namespace {

/// A song with a bank on channel 3 and none on channel 4.
test::Bytes TwoGuitars() {
    return test::MidiFileBuilder(0)
        .Track(test::TrackBuilder()
                   .Short(0, 0xB2, 0, 0)
                   .Short(0, 0xB2, 32, 0)
                   .Program(0, 2, 24)
                   .Program(0, 3, 24)
                   .Note(480, 2, 60, 90)
                   .Note(0, 3, 60, 90)
                   .NoteOff(480, 2, 60)
                   .NoteOff(0, 3, 60)
                   .End())
        .Build();
}

class RevoiceTest : public CliTest {
protected:
    RevoiceTest() {
        Put("song.mid", TwoGuitars());
        Put("table.tsv", test::BytesOf("8\t34\t0\tNew\t0\t0\t24\tNylon\n"));
    }
    std::string Track(const std::string& name) const {
        return test::Listing(test::DecodedSong(Get(name)).song.tracks[0]);
    }
};

TEST_F(RevoiceTest, ReplacesVoicesByATable) {
    const std::vector<std::string> revoice{"revoice", At("song.mid"),  "--instrument", "genos2",
                                           "--table", At("table.tsv"), "--out",        At("out")};
    EXPECT_EQ(Run(revoice), 0) << log_;
    EXPECT_TRUE(
        Shows("song.mid: 1 of 2 program changes replaced; 1 without bank select "
              "(--add-banks)\n   3  001.01.000  0/0/25 Nylon -> 8/34/1 New\n"))
        << out_;
    EXPECT_EQ(Track("out/song.mid"),
              "0 B20008; 0 B22022; 0 C200; 0 C318; 480 923C5A; 480 933C5A; "
              "960 823C40; 960 833C40");
    auto more = revoice;
    more.insert(more.end(), {"--add-banks", "--yes"});
    EXPECT_EQ(Run(more), 0) << log_;
    EXPECT_TRUE(Shows(": 2 of 2 program changes replaced\n")) << out_;
    EXPECT_TRUE(Track("out/song.mid")
                    .starts_with("0 B20008; 0 B22022; 0 C200; 0 B30008; 0 B32022; "
                                 "0 C300; "))
        << Track("out/song.mid");
    more = revoice;
    more.back() = At(""); // the song itself
    EXPECT_EQ(Run(more), 4);
    EXPECT_EQ(Get("song.mid"), TwoGuitars());
    EXPECT_EQ(Run({"convert", At("song.mid"), "--instrument", "genos2", "--revoice",
                   At("table.tsv"), "--out", At("converted")}),
              0)
        << log_;
    EXPECT_NE(Track("converted/song.mid").find("B20008; "), std::string::npos);
}

TEST_F(RevoiceTest, SuggestsTheInstrumentsOwnVoices) {
    EXPECT_EQ(
        Run({"revoice", At("song.mid"), "--instrument", "Yamaha Genos", "--suggest", "--dry-run"}),
        0)
        << log_;
    EXPECT_TRUE(Shows("  0/0/25 Nylon Guitar: NylonGuitar SW (S.Art!), SpanishGuitar (S.Art!), "))
        << out_;
    EXPECT_TRUE(Shows(" 0/0/25 Nylon Guitar -> 8/34/1 NylonGuitar SW (S.Art!)\n")) << out_;
    EXPECT_EQ(Run({"revoice", At("song.mid"), "--instrument", "Korg i30", "--suggest", "-n"}), 2);
    EXPECT_TRUE(Says("No voice list is known")) << log_;
}

TEST_F(RevoiceTest, AMissingBankLsbEndsIt) {
    Put("odd.mid", test::MidiFileBuilder(0)
                       .Track(test::TrackBuilder()
                                  .Short(0, 0xB2, 0, 0)
                                  .Program(0, 2, 24)
                                  .Note(0, 2, 60, 90)
                                  .NoteOff(480, 2, 60)
                                  .End())
                       .Build());
    EXPECT_EQ(Run({"revoice", At("odd.mid"), "--instrument", "genos2", "--table", At("table.tsv"),
                   "--out", At("out")}),
              1);
    EXPECT_TRUE(Says("Tracksmith: channel 3 - Ctrl32 is missing!")) << log_;
    EXPECT_TRUE(Exists("out/odd.mid"));
    EXPECT_EQ(Run({"convert", At("odd.mid"), "--instrument", "genos2", "--revoice", At("table.tsv"),
                   "--out", At("new")}),
              1);
    EXPECT_TRUE(Says("odd.mid: 0 of 2 program changes replaced")) << log_;
    EXPECT_TRUE(Exists("new/odd.mid"));
}

TEST_F(RevoiceTest, WrongTablesAndArguments) {
    Put("bad.tsv", test::BytesOf("8\t34\t0\tNew\t0\t0\t24\tNylon\n1\t2\t3\n"));
    const auto revoice = [&](std::vector<std::string> more) {
        more.insert(more.begin(), {"revoice", At("song.mid"), "--instrument", "genos2"});
        return Run(more);
    };
    EXPECT_EQ(revoice({"--table", At("bad.tsv"), "--out", At("out")}), 3);
    EXPECT_TRUE(Says("bad.tsv:2: ")) << log_;
    EXPECT_EQ(revoice({"--table", At("none.tsv"), "--out", At("out")}), 3);
    EXPECT_EQ(revoice({"--out", At("out")}), 2);
    EXPECT_EQ(revoice({"--suggest", "--table", At("table.tsv"), "--out", At("out")}), 2);
    EXPECT_EQ(revoice({"--table", At("table.tsv")}), 2);
    EXPECT_EQ(Run({"convert", At("song.mid"), "--revoice", At("table.tsv"), "--out", At("out")}),
              2);
    EXPECT_FALSE(Exists("out"));
}

} // namespace
} // namespace tracksmith::cli
