#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/system/file_io.h"
#include "base/system/fine_period_windows.h"
#include "base/system/folder_listing.h"
#include "base/system/message_poster.h"
#include "base/system/reachable_path.h"
#include "base/system/single_start.h"
#include "base/system/thread_timing.h"
#include "support/temporary_folder.h"

namespace tracksmith::system {
namespace {

namespace fs = std::filesystem;

int finePeriods = 0;

TEST(FinePeriodTest, IsAskedForWhileSomebodySleepsUntilAMoment) {
    const PeriodCalls systems = ReplacePeriodCalls({[](unsigned milliseconds) {
                                                        finePeriods += milliseconds == 1 ? 1 : 100;
                                                        return 0U;
                                                    },
                                                    [](unsigned milliseconds) {
                                                        finePeriods -= milliseconds == 1 ? 1 : 100;
                                                        return 0U;
                                                    }});
    const auto soon = [] {
        return std::chrono::steady_clock::now() + std::chrono::milliseconds(1);
    };
    {
        AlarmClock clock;
        EXPECT_EQ(finePeriods, 0);
        clock.SleepUntil(soon());
        clock.SleepUntil(soon());
        EXPECT_EQ(finePeriods, 1);
        clock.Ring();
        clock.Sleep(); // what plays has stopped
        EXPECT_EQ(finePeriods, 0);
        clock.SleepUntil(soon());
        EXPECT_EQ(finePeriods, 1);
    }
    EXPECT_EQ(finePeriods, 0);
    ReplacePeriodCalls(systems);
}

TEST(ReachablePathTest, OnlyLongPathsGetThePrefix) {
    const std::wstring longName(250, L'a');
    EXPECT_EQ(ReachablePath(L"C:\\songs\\a.mid"), fs::path(L"C:\\songs\\a.mid"));
    EXPECT_EQ(ReachablePath(L"a.mid"), fs::path(L"a.mid"));
    EXPECT_EQ(ReachablePath(fs::path()), fs::path());
    EXPECT_EQ(ReachablePath(L"C:/songs/./x/../" + longName).native(),
              L"\\\\?\\C:\\songs\\" + longName);
    EXPECT_EQ(ReachablePath(L"\\\\server\\songs\\" + longName).native(),
              L"\\\\?\\UNC\\server\\songs\\" + longName);
    EXPECT_EQ(ReachablePath(L"\\\\?\\C:\\" + longName).native(), L"\\\\?\\C:\\" + longName);
}

TEST(ReachablePathTest, FilesBeyondTheLimitAreWrittenReadAndListed) {
    const test::TemporaryFolder folder;
    const fs::path deep = folder / (std::wstring(120, L'\u00E4') + L"\\" + std::wstring(120, L'b'));
    ASSERT_GT(deep.native().size(), 260U);
    fs::create_directories(ReachablePath(deep));
    const std::vector<std::uint8_t> bytes{1, 2, 3};
    ASSERT_EQ(WriteFileAtomically(deep / L"S\u00F6ng.mid", bytes).outcome, WriteOutcome::Written);
    EXPECT_EQ(ReadRegularFile(deep / L"S\u00F6ng.mid"), bytes);
    EXPECT_EQ(ListFolder(deep).names, std::vector<fs::path>{L"S\u00F6ng.mid"});
    std::error_code ignored;
    fs::remove_all(ReachablePath(folder.Path()), ignored);
}

TEST(SingleStartTest, ASecondStartHandsOverAndTheFirstTakesLater) {
    SingleStart first("TracksmithTestStart");
    std::vector<fs::path> got;
    int calls = 0;
    first.Receive([&](const std::vector<fs::path>& files) {
        got.insert(got.end(), files.begin(), files.end());
        ++calls;
    });
    const SingleStart second("TracksmithTestStart");
    const SingleStart other("TracksmithTestOther");
    EXPECT_TRUE(first.First());
    EXPECT_TRUE(other.First());
    ASSERT_FALSE(second.First());
    const std::vector<fs::path> files{L"C:\\H\u00F6hen\\1.mid", L"C:\\\u6B4C.mid"};
    EXPECT_TRUE(second.HandOver(files));
    EXPECT_TRUE(second.HandOver({}));
    EXPECT_EQ(calls, 0); // the second start does not wait for it
    DispatchMessages();
    EXPECT_EQ(got, files);
    EXPECT_EQ(calls, 2);
}

} // namespace
} // namespace tracksmith::system
