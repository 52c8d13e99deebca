#include <chrono>

#include "cli_fixture.h"

namespace tracksmith::cli {
namespace {

/// Format number in the header of a song file.
int FormatOf(const test::Bytes& file) {
    return file.at(9);
}
int TracksOf(const test::Bytes& file) {
    return file.at(11);
}

TEST_F(CliTest, ConvertKeepsTheFoldersAndNumbersEqualNames) {
    Put("one/a.mid", Format1Song());
    Put("one/deep/b.mid", Format1Song());
    Put("two/A.mid", Format0Song());
    Put("c.mid", Format1Song());
    ASSERT_EQ(Run({"convert", At("one"), At("two"), At("c.mid"), At("one/deep/b.mid"), "--format",
                   "0", "--out", At("new")}),
              0)
        << log_;
    for (const char* name : {"a.mid", "deep/b.mid", "A-2.mid", "c.mid", "b.mid"}) {
        ASSERT_TRUE(Exists(std::string("new/") + name)) << name << "\n" << out_;
        EXPECT_EQ(FormatOf(Get(std::string("new/") + name)), 0) << name;
    }
    EXPECT_NE(out_.find(At("two/A.mid") + " -> " + At("new/A-2.mid") + "\n"), std::string::npos)
        << out_;
    EXPECT_EQ(Get("one/a.mid"), Format1Song());
}

TEST_F(CliTest, OriginalsAreReplacedOnlyInPlace) {
    Put("song.mid", Format1Song());
    EXPECT_EQ(Run({"convert", At("song.mid"), "--format", "0", "--yes", "--out", At(".")}), 4);
    EXPECT_TRUE(Says("Originals are not overwritten")) << log_;
    EXPECT_EQ(Get("song.mid"), Format1Song());
    // Not by way of another input of the batch either.
    Put("sub/song.mid", Format0Song());
    EXPECT_EQ(Run({"convert", At("sub/song.mid"), At("song.mid"), "--yes", "--out", At(".")}), 5);
    EXPECT_EQ(Get("song.mid"), Format1Song());

    EXPECT_EQ(Run({"convert", At("song.mid"), "--format", "0", "--in-place"}), 0) << log_;
    EXPECT_EQ(FormatOf(Get("song.mid")), 0);
}

TEST_F(CliTest, ExistingResultsNeedYes) {
    Put("song.mid", Format1Song());
    Put("new/song.mid", BrokenSong());
    EXPECT_EQ(Run({"convert", At("song.mid"), "--out", At("new")}), 4);
    EXPECT_TRUE(Says("--yes")) << log_;
    EXPECT_EQ(Get("new/song.mid"), BrokenSong());
    EXPECT_EQ(Run({"convert", At("song.mid"), "--out", At("new"), "-y"}), 0);
    EXPECT_EQ(FormatOf(Get("new/song.mid")), 1);
}

TEST_F(CliTest, SkippingWhatIsDoneContinuesARun) {
    namespace fs = std::filesystem;
    for (const char* name : {"songs/a.mid", "songs/b.mid", "songs/c.mid", "songs/d.mid"}) {
        Put(name, Format1Song());
    }
    const std::vector<std::vector<std::string>> commands{
        {"convert", At("songs"), "--skip-done", "--out", At("new")},
        {"check", At("songs"), "--repair", "--skip-done", "--out", At("new")},
        {"revoice", At("songs"), "--skip-done", "--instrument", "Tyros 5", "--suggest", "--out",
         At("new")}};
    for (const auto& command : commands) {
        fs::remove_all(At("new"));
        Put("new/a.mid", Format0Song()); // done before
        Put("new/b.mid", test::Bytes()); // cut off
        Put("new/c.mid", Format0Song()); // older than its song
        fs::last_write_time(At("new/c.mid"),
                            fs::last_write_time(At("songs/c.mid")) - std::chrono::hours(1));
        EXPECT_EQ(Run(command), 5) << log_; // b and c are not overwritten without a word
        EXPECT_TRUE(Says("4 files: 1 done, 1 were done before, 2 failed")) << log_;
        EXPECT_EQ(Get("new/c.mid"), Format0Song());
        auto all = command;
        all.emplace_back("--yes");
        EXPECT_NE(Run(all), 5) << log_;
        EXPECT_TRUE(Says("4 files: 2 done, 2 were done before, 0 failed")) << log_;
        EXPECT_EQ(Get("new/a.mid"), Format0Song());
        EXPECT_EQ(FormatOf(Get("new/b.mid")), 1);
        EXPECT_EQ(Run(all), 0) << log_;
        EXPECT_TRUE(Says("4 files: 0 done, 4 were done before, 0 failed")) << log_;
    }
    EXPECT_EQ(Run({"convert", At("songs"), "--skip-done", "--in-place"}), 2);
    EXPECT_EQ(Run({"check", At("songs"), "--skip-done"}), 2);
    EXPECT_TRUE(Says("--skip-done needs --out")) << log_;
}

TEST_F(CliTest, DryRunWritesNothing) {
    Put("songs/a.mid", Format1Song());
    EXPECT_EQ(Run({"convert", At("songs"), "--format", "0", "--dry-run", "--out", At("new")}), 0);
    EXPECT_NE(out_.find(At("new/a.mid")), std::string::npos) << out_;
    EXPECT_FALSE(Exists("new"));
    EXPECT_EQ(Run({"convert", At("songs"), "--format", "0", "--dry-run", "--in-place"}), 0);
    EXPECT_EQ(Get("songs/a.mid"), Format1Song());
}

TEST_F(CliTest, OptionsReachTheReaderAndTheWriter) {
    const test::Bytes song = Format0Song();
    const std::string input(song.begin(), song.end());
    ASSERT_EQ(Run({"convert", "-", "--split"}, input), 0) << log_;
    const test::Bytes split(out_.begin(), out_.end());
    EXPECT_EQ(FormatOf(split), 1);
    EXPECT_GT(TracksOf(split), 1);

    ASSERT_EQ(Run({"convert", "-"}, input), 0);
    const std::size_t plain = out_.size();
    ASSERT_EQ(Run({"convert", "-", "--running-status"}, input), 0);
    EXPECT_LT(out_.size(), plain);
    ASSERT_EQ(Run({"convert", "-", "--omit-port-events"}, input), 0);
    EXPECT_LT(out_.size(), plain);
    EXPECT_EQ(out_.find("\xFF\x21"), std::string::npos);
    ASSERT_EQ(Run({"convert", "-", "--dry-run"}, input), 0);
    EXPECT_EQ(out_, "");
    Put("song.mid", song);
    ASSERT_EQ(Run({"convert", At("song.mid"), "--out", "-"}), 0);
    EXPECT_EQ(out_.size(), plain);
}

TEST_F(CliTest, UnwritableResultEndsWithFour) {
    Put("song.mid", Format1Song());
    Put("file", BrokenSong());
    EXPECT_EQ(Run({"convert", At("song.mid"), "--out", At("file/below")}), 4);
    EXPECT_NE(log_, "");
    EXPECT_EQ(out_, "");
}

} // namespace
} // namespace tracksmith::cli
