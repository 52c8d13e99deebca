#include "app/backups/backup_folder.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

#include "app/backups/backup_index.h"

#ifndef _WIN32
#include <chrono>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#endif

namespace tracksmith::backups {
namespace {

namespace fs = std::filesystem;
using test::FileBytes;
using test::PutFile;
using Bytes = std::vector<std::uint8_t>;

TEST(BackupNameTest, EveryFileSystemTakesIt) {
    const std::vector<std::pair<fs::path, std::string>> rows{
        {"songs/Evening Waltz.mid", "Evening Waltz"},
        {fs::path(u8"Schöner Tag.kar"), "Schöner Tag"},
        {"a<b>c:d\"e|f?g*h.mid", "a_b_c_d_e_f_g_h"},
        {"CON.mid", "_CON"},
        {"lpt1.a.mid", "_lpt1.a"},
        {"Console.mid", "Console"},
        {"", "unnamed"},
        {std::string(250, 'x'), std::string(200, 'x')},
    };
    for (const auto& [file, expected] : rows) {
        EXPECT_EQ(SongNameOf(file, "unnamed"), expected);
    }
    std::string wide(199, 'x');
    EXPECT_EQ(SongNameOf(fs::path(std::u8string(wide.begin(), wide.end()) + u8"ä"), ""), wide);
}

TEST(BackupNameTest, ItIsReadAgain) {
    struct Row {
        const char* file;
        const char* song; // null for another file
        int number = 1;
    };
    const std::vector<Row> rows{
        {"Waltz_20261122_131803.mid", "Waltz"},
        {"Waltz_20261122_131803_12.mid", "Waltz", 12},
        {"A_20250101_000000_20261122_131803.mid", "A_20250101_000000"},
        {"Waltz_20261122_131803_1.mid", nullptr},
        {"Waltz_20261122_131803_02.mid", nullptr},
        {"Waltz_NoteOnOff.txt", nullptr},
        {"Waltz.mid", nullptr},
        {"_20261122_131803.mid", nullptr},
        {"index.tsv", nullptr},
        {"_.mid", nullptr},
        {"", nullptr},
    };
    for (const Row& row : rows) {
        const auto name = ParseBackupName(row.file);
        ASSERT_EQ(name.has_value(), row.song != nullptr) << row.file;
        if (name) {
            EXPECT_EQ(name->song, row.song);
            EXPECT_EQ(name->number, row.number);
            EXPECT_EQ(name->FileName(), row.file);
        }
    }
    EXPECT_TRUE(ParseBackupName("x_" + StampOf(1'700'000'000) + ".mid").has_value());
}

// Each letter is a song, the newest first.
std::string LeftOf(const std::string& songs) {
    std::vector<Backup> list;
    for (const char song : songs) {
        Backup backup;
        backup.original = fs::path("/songs") / std::string(1, song);
        backup.name.number = static_cast<int>(list.size());
        list.push_back(backup);
    }
    std::string left = songs;
    for (const Backup& gone : BackupsToRemove(list)) {
        left[static_cast<std::size_t>(gone.name.number)] = ' ';
    }
    std::erase(left, ' ');
    return left;
}

TEST(BackupsToRemoveTest, TheNewestStayAndOneOfEachOfTheLastSongs) {
    const std::string twenty = "abcdefghijklmnopqrst";
    EXPECT_EQ(LeftOf(std::string(50, 'a')), std::string(50, 'a'));
    EXPECT_EQ(LeftOf(std::string(70, 'a') + "bcb"), std::string(48, 'a') + "bc");
    EXPECT_EQ(LeftOf(std::string(60, 'a') + twenty), std::string(31, 'a') + twenty.substr(1));
    // Of songs further back nothing is promised.
    EXPECT_EQ(LeftOf(twenty + std::string(40, 'a') + "z"), twenty + std::string(30, 'a'));
}

class BackupFolderTest : public testing::Test {
protected:
    fs::path Write(const std::string& song, const fs::path& original, const Bytes& bytes = {1, 2}) {
        const auto outcome = backups_.Write({song, original, "20261122_131803"}, bytes);
        EXPECT_EQ(outcome.result.outcome, system::WriteOutcome::Written);
        return outcome.file;
    }

    test::TemporaryFolder folder_;
    BackupFolder backups_{folder_ / "data" / "AutoBackups"};
};

TEST_F(BackupFolderTest, NamesThatMeetGetANumberAndOtherFilesStayOut) {
    const fs::path odd = fs::path("/so\tngs%") / "Wal\ntz.mid";
    EXPECT_TRUE(backups_.List().backups.empty());
    EXPECT_EQ(Write("Waltz", "/a/Waltz.mid", {1}).filename(), "Waltz_20261122_131803.mid");
    EXPECT_EQ(Write("Waltz", odd, {2}).filename(), "Waltz_20261122_131803_2.mid");
    PutFile(backups_.Path() / "Waltz_NoteOnOff.txt", Bytes(3));
    fs::create_directory(backups_.Path() / "Folder_20261122_131803.mid");
    const BackupList list = backups_.List();
    ASSERT_EQ(list.backups.size(), 2U);
    EXPECT_EQ(list.backups[0].original, odd);
    EXPECT_EQ(list.backups[1].original, "/a/Waltz.mid");
    EXPECT_EQ(FileBytes(list.backups[1].file), Bytes{1});
    EXPECT_EQ(list.backups[1].bytes, 1U);
}

TEST_F(BackupFolderTest, TheFiftyNewestAreKeptAndReportsAreNotTouched) {
    for (int i = 0; i < 53; ++i) {
        Write("Waltz", "/a/Waltz.mid", {static_cast<std::uint8_t>(i)});
        PutFile(backups_.Path() / ("Waltz" + std::to_string(i) + "_NoteOnOff.txt"), Bytes(3));
    }
    const BackupList list = backups_.List();
    ASSERT_EQ(list.backups.size(), kMostBackups);
    EXPECT_EQ(FileBytes(list.backups.front().file), Bytes{52});
    EXPECT_EQ(FileBytes(list.backups.back().file), Bytes{3});
    EXPECT_EQ(std::distance(fs::directory_iterator(backups_.Path()), {}), 50 + 53 + 1);
}

TEST_F(BackupFolderTest, ADamagedIndexGivesWhatIsWholeInItAndIsMadeAnew) {
    Write("A", "/a/A.mid");
    Write("B", "/b/B.mid");
    const Bytes index = FileBytes(backups_.Path() / "index.tsv");
    for (std::size_t cut = 0; cut < index.size(); ++cut) {
        PutFile(backups_.Path() / "index.tsv", {index.data(), cut});
        for (const Backup& backup : backups_.List().backups) {
            const fs::path whole =
                fs::path("/" + std::string(backup.name.song == "A" ? "a" : "b")) /
                (backup.name.song + ".mid");
            EXPECT_TRUE(backup.original.empty() || backup.original == whole) << cut;
        }
    }
    PutFile(backups_.Path() / "index.tsv", test::FileBytes(backups_.List().backups[0].file));
    Write("C", "/c/C.mid");
    const BackupIndex anew = ReadBackupIndex(backups_.Path());
    EXPECT_EQ(anew.size(), 3U);
    EXPECT_EQ(anew.at("C_20261122_131803.mid"), "/c/C.mid");
    EXPECT_TRUE(anew.at("A_20261122_131803.mid").empty());
}

TEST_F(BackupFolderTest, AFolderThatCannotBeMadeIsAFailure) {
    PutFile(folder_ / "data", Bytes(1));
    const auto outcome = backups_.Write({"A", "", "20261122_131803"}, Bytes(2));
    EXPECT_EQ(outcome.result.outcome, system::WriteOutcome::CreateFailed);
    EXPECT_TRUE(outcome.result.error);
}

#ifndef _WIN32

TEST_F(BackupFolderTest, AFullDiskLeavesTheOlderBackupsWithTheirSongs) {
    Write("A", "/a/A.mid");
    for (const rlim_t limit : {0, 10, 100}) {
        const test::FileSizeLimit full(limit);
        const auto outcome = backups_.Write({"B", "/b/B.mid", "20261122_131804"}, Bytes(500));
        EXPECT_NE(outcome.result.outcome, system::WriteOutcome::Written);
    }
    const BackupList list = backups_.List();
    ASSERT_EQ(list.backups.size(), 1U);
    EXPECT_EQ(list.backups[0].original, "/a/A.mid");
}

// Whenever the program is killed, each backup is whole and knows its song.
TEST_F(BackupFolderTest, KilledAtAnyMoment) {
    constexpr std::size_t kSize = 60'000;
    std::size_t most = 0;
    for (int kill = 0; kill < 20; ++kill) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (std::uint8_t value = 1;; ++value) {
                static_cast<void>(
                    backups_.Write({"A", "/a/A.mid", "20261122_131803"}, Bytes(kSize, value)));
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2 + 3 * kill));
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        for (const Backup& backup : backups_.List().backups) {
            const Bytes bytes = FileBytes(backup.file);
            ASSERT_EQ(bytes, Bytes(kSize, bytes.empty() ? 0 : bytes.front()));
            ASSERT_EQ(backup.original, "/a/A.mid");
        }
        most = std::max(most, backups_.List().backups.size());
    }
    EXPECT_GT(most, 0U);
    EXPECT_LE(most, kMostBackups + 1);
}

#endif

} // namespace
} // namespace tracksmith::backups
