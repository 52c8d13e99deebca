#include "base/system/single_start.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

#include "base/system/message_poster.h"
#include "support/temporary_folder.h"

namespace tracksmith::system {
namespace {

namespace fs = std::filesystem;

class SingleStartTest : public testing::Test {
protected:
    void SetUp() override { setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1); }
    void TearDown() override { unsetenv("XDG_RUNTIME_DIR"); }

    test::TemporaryFolder folder_;
};

TEST_F(SingleStartTest, ASecondStartHandsOverAndTheFirstTakesLater) {
    auto first = std::make_unique<SingleStart>("start");
    std::vector<fs::path> got;
    int calls = 0;
    first->Receive([&](const std::vector<fs::path>& files) {
        got.insert(got.end(), files.begin(), files.end());
        ++calls;
    });
    const SingleStart second("start");
    EXPECT_TRUE(SingleStart("other").First());
    ASSERT_TRUE(first->First());
    ASSERT_FALSE(second.First());
    const std::vector<fs::path> files{"/songs/H\xC3\xB6hen 1.mid", "/\xFF.mid"};
    EXPECT_TRUE(second.HandOver(files));
    EXPECT_TRUE(second.HandOver({}));
    EXPECT_EQ(calls, 0); // the second start does not wait for it
    while (calls < 2) {
        DispatchMessages();
        std::this_thread::yield();
    }
    EXPECT_EQ(got, files);
    first.reset();
    EXPECT_TRUE(SingleStart("start").First());
}

// As after a program that was killed, whose socket is left behind.
TEST_F(SingleStartTest, TakesThePlaceOfOneThatIsGone) {
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("DISPLAY");
    std::ofstream(folder_.Path() / "start-") << "left";
    SingleStart first("start");
    first.Receive([](const std::vector<fs::path>&) {});
    EXPECT_TRUE(SingleStart("start").HandOver({}));
}

TEST(SingleStartAloneTest, EachStartIsTheFirstWithoutAFolderOfTheLogin) {
    unsetenv("XDG_RUNTIME_DIR");
    const SingleStart first("start");
    EXPECT_TRUE(first.First());
    EXPECT_TRUE(SingleStart("start").First());
}

} // namespace
} // namespace tracksmith::system
