#include "base/system/file_io.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

#include "support/midi_file_builder.h"
#include "support/temporary_folder.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tracksmith::system {
namespace {

namespace fs = std::filesystem;
using namespace test;

TEST(FileIo, WritesAndReadsBackAndLeavesNothingElse) {
    const TemporaryFolder folder;
    const fs::path file = folder / fs::path(u8"Größe 𝄞.mid");
    for (const std::size_t size : {0U, 1U, 100'000U, 5U}) {
        const Bytes bytes(size, 0xA5);
        const WriteResult result = WriteFileAtomically(file, bytes);
        EXPECT_EQ(result.outcome, WriteOutcome::Written);
        EXPECT_EQ(result.written, size);
        EXPECT_EQ(ReadRegularFile(file), bytes);
        EXPECT_EQ(folder.Count(), 1);
    }
    EXPECT_EQ(PathText(file.filename()), "Größe 𝄞.mid");
}

TEST(FileIo, HowFarReadingIsIsToldAndCanEndIt) {
    const TemporaryFolder folder;
    const fs::path file = folder / "large.mid";
    Bytes bytes(1'000'003);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 7 / 256);
    }
    WriteFileAtomically(file, bytes);
    std::vector<std::uint64_t> told;
    const auto read = [&](std::size_t most) {
        told.clear();
        return ReadRegularFile(file, [&](std::uint64_t done, std::uint64_t size) {
            EXPECT_EQ(size, bytes.size());
            told.push_back(done);
            return told.size() < most;
        });
    };
    EXPECT_EQ(read(1'000), bytes);
    EXPECT_GT(told.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_EQ(told.back(), bytes.size());
    EXPECT_EQ(read(2), std::nullopt);
    EXPECT_EQ(told.size(), 2U);
}

TEST(FileIo, MissingFilesAndFoldersAreNotRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(ReadRegularFile(folder / "missing.mid"), std::nullopt);
    EXPECT_EQ(ReadRegularFile(folder.Path()), std::nullopt);
    EXPECT_EQ(ReadRegularFile(fs::path()), std::nullopt);
    EXPECT_EQ(ReadFileStart(folder / "missing.mid", 9).error, std::errc::no_such_file_or_directory);
    EXPECT_EQ(ReadFileStart(folder.Path(), 9).error, std::errc::is_a_directory);
}

TEST(FileIo, TheStartOfAFileIsReadAlone) {
    const TemporaryFolder folder;
    PutFile(folder / "song.mid", {{1, 2, 3, 4}});
    const Bytes whole{1, 2, 3, 4};
    for (const std::size_t most : {0U, 3U, 4U, 5U}) {
        const FileStart start = ReadFileStart(folder / "song.mid", most);
        EXPECT_FALSE(start.error);
        EXPECT_EQ(start.size, 4U);
        EXPECT_EQ(start.bytes, Bytes(whole.begin(), whole.begin() + std::min(most, whole.size())));
    }
}

TEST(FileIo, NoFileCanBeMadeInAMissingFolderOrOverAFolder) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "target.mid");
    const Bytes bytes(10);
    const std::vector<std::pair<fs::path, std::errc>> rows{
        {folder / "missing" / "x.mid", std::errc::no_such_file_or_directory},
        {folder / "target.mid", std::errc::is_a_directory}};
    for (const auto& [path, reason] : rows) {
        const WriteResult result = WriteFileAtomically(path, bytes);
        EXPECT_EQ(result.outcome, WriteOutcome::CreateFailed) << path;
        EXPECT_EQ(result.error, reason) << path << ": " << result.error.message();
    }
    EXPECT_TRUE(fs::is_directory(folder / "target.mid"));
    EXPECT_EQ(folder.Count(), 1);
}

TEST(FileIo, AReaderNeverSeesHalfOfAWrite) {
    const TemporaryFolder folder;
    const fs::path file = folder / "song.mid";
    PutFile(file, Bytes(200'000, 0));
    std::jthread writer([&](const std::stop_token& stop) {
        for (std::uint8_t value = 1; !stop.stop_requested(); ++value) {
            WriteFileAtomically(file, Bytes(200'000, value));
        }
    });
    for (int i = 0; i < 200; ++i) {
        const auto bytes = ReadRegularFile(file);
        if (bytes) { // Windows may refuse to open a file that is just being replaced
            ASSERT_EQ(bytes->size(), 200'000U);
            ASSERT_EQ(*bytes, Bytes(200'000, bytes->front()));
        }
    }
}

#ifndef _WIN32

TEST(FileIo, KeepsPermissions) {
    const TemporaryFolder folder;
    for (const mode_t mode : {0640U, 0600U, 0664U}) {
        const fs::path file = folder / "song.mid";
        PutFile(file, Bytes(3));
        ASSERT_EQ(chmod(file.c_str(), mode), 0);
        EXPECT_EQ(WriteFileAtomically(file, Bytes(4)).outcome, WriteOutcome::Written);
        struct stat status {};
        ASSERT_EQ(stat(file.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, mode);
    }
}

TEST(FileIo, KeepsTheOwnerWhereThatIsAllowed) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may give files away";
    }
    const TemporaryFolder folder;
    const fs::path file = folder / "song.mid";
    PutFile(file, Bytes(3));
    ASSERT_EQ(chown(file.c_str(), 65534, 65533), 0);
    ASSERT_EQ(chmod(file.c_str(), 0464), 0);
    EXPECT_EQ(WriteFileAtomically(file, Bytes(4)).outcome, WriteOutcome::Written);
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 65534U);
    EXPECT_EQ(status.st_gid, 65533U);
    EXPECT_EQ(status.st_mode & 07777U, 0464U);
}

TEST(FileIo, ANewFileCanBeTheOwnersAlone) {
    const TemporaryFolder folder;
    WriteFileAtomically(folder / "a", Bytes(4), NewFileAccess::OnlyOwner);
    struct stat status {};
    ASSERT_EQ(stat((folder / "a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(FileIo, WhatKilledProgramsLeftIsRemovedButNoFileInUse) {
    const TemporaryFolder folder;
    for (const char* name : {".tracksmith-12-3.tmp", ".tracksmith-dead.tmp", ".tracksmith-live.tmp",
                             ".tracksmith-.tmp", "tracksmith-x.tmp", ".tracksmith-x.mid"}) {
        PutFile(folder / name, Bytes(1));
    }
    const int live = open((folder / ".tracksmith-live.tmp").c_str(), O_RDWR);
    ASSERT_EQ(flock(live, LOCK_EX), 0);
    EXPECT_EQ(WriteFileAtomically(folder / "song.mid", Bytes(4)).outcome, WriteOutcome::Written);
    EXPECT_FALSE(fs::exists(folder / ".tracksmith-12-3.tmp"));
    EXPECT_FALSE(fs::exists(folder / ".tracksmith-dead.tmp"));
    EXPECT_EQ(folder.Count(), 5);
    close(live);
}

TEST(FileIo, ALinkStaysALinkAndItsTargetIsReplaced) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "real");
    const fs::path target = folder / "real" / "song.mid";
    PutFile(target, Bytes(3));
    fs::create_symlink(fs::path("real") / "song.mid", folder / "link.mid");
    fs::create_symlink("link.mid", folder / "second.mid");
    EXPECT_EQ(WriteFileAtomically(folder / "second.mid", Bytes(7)).outcome, WriteOutcome::Written);
    EXPECT_TRUE(fs::is_symlink(folder / "link.mid"));
    EXPECT_TRUE(fs::is_symlink(folder / "second.mid"));
    EXPECT_EQ(FileBytes(target), Bytes(7));
    EXPECT_EQ(folder.Count(), 3);
    fs::create_symlink(fs::path("real") / "new.mid", folder / "dangling.mid");
    EXPECT_EQ(WriteFileAtomically(folder / "dangling.mid", Bytes(2)).outcome,
              WriteOutcome::Written);
    EXPECT_EQ(FileBytes(folder / "real" / "new.mid"), Bytes(2));
    fs::create_hard_link(target, folder / "hard.mid");
    WriteFileAtomically(target, Bytes(5));
    EXPECT_EQ(FileBytes(folder / "hard.mid"), Bytes(7)) << "documented so";
}

TEST(FileIo, APipeOrDeviceNeitherBlocksNorIsTouched) {
    const TemporaryFolder folder;
    const fs::path pipe = folder / "pipe.mid";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(ReadRegularFile(pipe), std::nullopt);
    EXPECT_EQ(ReadRegularFile("/dev/zero"), std::nullopt);
    EXPECT_EQ(WriteFileAtomically(pipe, Bytes(5)).outcome, WriteOutcome::CreateFailed);
    EXPECT_EQ(ReadFileStart(pipe, 5).error, std::errc::operation_not_supported);
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(folder.Count(), 1);
}

TEST(FileIo, AFileOver2GiBIsNotRead) {
    const TemporaryFolder folder;
    const fs::path file = folder / "large.mid";
    PutFile(file, Bytes(1));
    ASSERT_EQ(truncate(file.c_str(), (1LL << 31)), 0);
    EXPECT_EQ(ReadRegularFile(file), std::nullopt);
    EXPECT_EQ(ReadFileStart(file, 1).size, std::uint64_t{1} << 31);
}

struct FullDisk {
    rlim_t room;
    WriteOutcome outcome;
};

class FullDiskTest : public testing::TestWithParam<FullDisk> {};

TEST_P(FullDiskTest, KeepsTheOldBytesAndLeavesNoTemporaryFile) {
    const TemporaryFolder folder;
    const fs::path file = folder / "song.mid";
    PutFile(file, Bytes(9, 1));
    WriteResult result;
    {
        const FileSizeLimit full(GetParam().room);
        result = WriteFileAtomically(file, Bytes(10'000, 2));
    }
    EXPECT_EQ(result.outcome, GetParam().outcome);
    EXPECT_EQ(result.written, GetParam().room);
    EXPECT_EQ(result.error, std::errc::file_too_large);
    EXPECT_EQ(FileBytes(file), Bytes(9, 1));
    EXPECT_EQ(folder.Count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Rooms, FullDiskTest,
                         testing::Values(FullDisk{4096, WriteOutcome::Incomplete},
                                         FullDisk{0, WriteOutcome::Failed}));

#endif

} // namespace
} // namespace tracksmith::system
