#include "app/revoice_folder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "support/midi_file_builder.h"
#include "support/temporary_folder.h"

#include "instruments/voices/voice_tables.h"

namespace tracksmith::app {
namespace {

using test::Bytes;

const std::string kOldVoice = "Old";
const std::string kNewVoice = "New";

/// A song that selects program 25, with as many bank selects as `banks` says.
Bytes Guitar(int banks) {
    test::TrackBuilder track;
    if (banks > 0) {
        track.Short(0, 0xB2, 0, 0);
    }
    if (banks > 1) {
        track.Short(0, 0xB2, 32, 0);
    }
    track.Program(0, 2, 24).Note(480, 2, 60, 90).NoteOff(480, 2, 60);
    return test::MidiFileBuilder(0).Track(track.End()).Build();
}

class RevoiceFolderTest : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_ / "in/sub");
        Put("in/a.mid", Guitar(2));
        Put("in/sub/a.MID", Guitar(2));
        Put("in/none.mid", Guitar(0));
        Put("in/odd.mid", Guitar(1));
        Put("in/bad.mid", {1, 2, 3});
        Put("in/read.me", {1});
        order_.source = folder_ / "in";
        order_.target = folder_ / "out";
        order_.revoice.entries = {{{8, 34, 0}, kNewVoice, {0, 0, 24}, kOldVoice}};
    }
    void Put(const char* name, const Bytes& bytes) const {
        std::ofstream file(folder_ / name, std::ios::binary);
        for (const std::uint8_t byte : bytes) {
            file.put(static_cast<char>(byte));
        }
    }
    bool Written(const char* name) const { return std::filesystem::exists(folder_ / name); }
    FolderResult Run(bool replace, std::size_t songs = 5, std::size_t existing = 0) const {
        FolderRevoicing run(order_, tables_, Language::English);
        run.Find();
        EXPECT_EQ(run.Songs(), songs);
        EXPECT_EQ(run.Existing(), existing);
        FolderResult result = run.Run(replace);
        EXPECT_EQ(run.Done(), songs);
        return result;
    }

    test::TemporaryFolder folder_;
    instruments::VoiceTables tables_{{}};
    FolderOrder order_;
};

TEST_F(RevoiceFolderTest, TellsWhatBecameOfEachSongAndLeavesTheOriginals) {
    const FolderResult result = Run(false);
    EXPECT_EQ(result.revoiced, 2U);
    EXPECT_EQ(result.unchanged, 1U);
    EXPECT_EQ(result.withoutBank, 1U);
    ASSERT_EQ(result.partly.size(), 1U);
    EXPECT_EQ(result.partly[0].path, folder_ / "in/odd.mid");
    EXPECT_NE(result.partly[0].words.find("channel 3"), std::string::npos);
    ASSERT_EQ(result.failed.size(), 1U);
    EXPECT_EQ(result.failed[0].path, folder_ / "in/bad.mid");
    EXPECT_NE(result.failed[0].words.find("too short"), std::string::npos);
    EXPECT_EQ(test::FileBytes(folder_ / "in/a.mid"), Guitar(2));
    EXPECT_EQ(test::FileBytes(folder_ / "out/none.mid"), Guitar(0)); // byte for byte
    EXPECT_NE(test::FileBytes(folder_ / "out/sub/a.MID"), Guitar(2));
    EXPECT_FALSE(Written("out/bad.mid") || Written("out/read.me"));
}

TEST_F(RevoiceFolderTest, FilesInTheTargetStayUntilTheyMayBeReplaced) {
    order_.revoice.addBanks = true;
    std::filesystem::create_directories(folder_ / "out");
    Put("out/a.mid", {7});
    EXPECT_EQ(Run(false, 5, 1).kept, 1U);
    EXPECT_EQ(test::FileBytes(folder_ / "out/a.mid"), Bytes{7});
    const FolderResult again = Run(true, 5, 4);
    EXPECT_EQ(again.revoiced, 4U); // the added bank selects let the table fit all
    EXPECT_EQ(again.kept + again.unchanged, 0U);
    EXPECT_NE(test::FileBytes(folder_ / "out/a.mid"), Bytes{7});
}

TEST_F(RevoiceFolderTest, NeverWritesOverAnOriginal) {
    order_.source = folder_ / "in"; // whose folder sub/in holds a song of the same name
    order_.target = folder_.Path();
    std::filesystem::create_directories(folder_ / "in/in");
    Put("in/in/a.mid", Guitar(2));
    const FolderResult result = Run(true, 6, 1);
    ASSERT_EQ(result.failed.size(), 2U);
    EXPECT_EQ(test::FileBytes(folder_ / "in/a.mid"), Guitar(2));
}

TEST_F(RevoiceFolderTest, EndsWhereCancelledOrTheTargetCannotBeMade) {
    FolderRevoicing run(order_, tables_, Language::English);
    run.Find();
    run.Cancel();
    EXPECT_TRUE(run.Run(false).cancelled);
    EXPECT_EQ(run.Done(), 0U);
    order_.target = folder_ / "in/a.mid/out";
    FolderRevoicing other(order_, tables_, Language::English);
    other.Find();
    EXPECT_EQ(other.Run(false).failed.size(), 1U);
}

TEST_F(RevoiceFolderTest, FoldersThatCannotServe) {
    const std::vector<std::tuple<const char*, const char*, std::optional<FolderFault>>> rows{
        {"in", "out", std::nullopt},
        {"in", "inner", std::nullopt},
        {"in", "", std::nullopt}, // the folder around it
        {"none", "out", FolderFault::NoSource},
        {"in/a.mid", "out", FolderFault::NoSource},
        {"in", "in/a.mid", FolderFault::NoTarget},
        {"in", "in/../in/", FolderFault::SameFolder},
        {"in/", "in", FolderFault::SameFolder},
        {"in", "in/sub/../new", FolderFault::TargetInSource}};
    for (const auto& [source, target, fault] : rows) {
        EXPECT_EQ(FaultOf(folder_ / source, folder_ / target), fault) << source << " " << target;
    }
    EXPECT_EQ(FaultOf(folder_ / "in", {}), FolderFault::NoTarget);
}

} // namespace
} // namespace tracksmith::app
