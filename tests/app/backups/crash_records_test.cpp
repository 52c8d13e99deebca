#include "app/backups/crash_records.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "support/scratch_settings.h"

namespace tracksmith::backups {
namespace {

TEST(CrashRecordsTest, TheNewestIsToldOnceAndFewAreKept) {
    const test::TemporaryFolder folder;
    test::ScratchSettings settings;
    EXPECT_FALSE(TakeUntoldCrash(settings.Store(), folder / "absent"));
    for (const char* day : {"07", "02", "03", "01", "06", "04", "05"}) {
        test::PutFile(folder / ("crash-202601" + std::string(day) + "-120000.dmp"), {});
    }
    test::PutFile(folder / "crash.txt", {});
    EXPECT_EQ(TakeUntoldCrash(settings.Store(), folder.Path()),
              folder / "crash-20260107-120000.dmp");
    EXPECT_FALSE(TakeUntoldCrash(settings.Store(), folder.Path()));
    EXPECT_EQ(folder.Count(), 6); // five and the text
    EXPECT_FALSE(std::filesystem::exists(folder / "crash-20260102-120000.dmp"));
    test::PutFile(folder / "crash-20260108-120000.dmp", {});
    EXPECT_TRUE(TakeUntoldCrash(settings.Store(), folder.Path()));
}

} // namespace
} // namespace tracksmith::backups
