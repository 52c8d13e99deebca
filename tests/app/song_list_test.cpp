#include "app/song_list.h"

#include <gtest/gtest.h>
#include <string>

#include "support/midi_file_builder.h"
#include "support/temporary_folder.h"

namespace tracksmith::app {
namespace {

class SongListTest : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_ / "sub.mid");
        for (const char* name : {"b.mid", "A.MID", "a.kar", "c.txt", "d.smf", "e.midi", "other"}) {
            test::PutFile(folder_ / name, test::Bytes(1));
        }
    }
    /// "name number/count" of the song so many steps from `open`.
    std::string Step(const std::filesystem::path& open, int step) {
        const auto entry = list_.Step(open, step);
        return !entry ? "-"
                      : entry->file.filename().string() + " " + std::to_string(entry->number) +
                            "/" + std::to_string(entry->count);
    }

    test::TemporaryFolder folder_;
    SongList list_;
};

TEST_F(SongListTest, GoesThroughTheFolderByName) {
    EXPECT_EQ(Step(folder_ / "b.mid", 1), "d.smf 4/5");
    list_.Opened();
    EXPECT_EQ(Step(folder_ / "b.mid", -1), "A.MID 2/5");
    list_.Opened();
    EXPECT_EQ(Step(folder_ / "a.kar", -1), "-");
    EXPECT_EQ(Step(folder_ / "e.midi", 1), "-");
    EXPECT_EQ(Step(folder_ / "gone.mid", 1), "-");
    EXPECT_FALSE(list_.Waits());
    EXPECT_EQ(Step(folder_ / "sub.mid/../a.kar", 1), "A.MID 2/5");
}

// One that cannot be read is passed by the next step in the same direction.
TEST_F(SongListTest, GoesOnFromASongThatWasNotOpened) {
    EXPECT_EQ(Step(folder_ / "a.kar", 1), "A.MID 2/5");
    EXPECT_TRUE(list_.Waits());
    EXPECT_EQ(Step("", 1), "b.mid 3/5");
    EXPECT_EQ(Step("", -1), "A.MID 2/5");
    list_.Opened();
    EXPECT_FALSE(list_.Waits());
}

TEST_F(SongListTest, SongsHandedOverTogetherAreTheList) {
    list_.Take({folder_ / "d.smf", folder_ / "a.kar", folder_ / "d.smf"});
    EXPECT_EQ(Step(folder_ / "d.smf", 1), "a.kar 2/2");
    list_.Opened();
    EXPECT_EQ(Step(folder_ / "a.kar", 1), "-");
    EXPECT_EQ(Step(folder_ / "b.mid", 1), "d.smf 4/5"); // opened from elsewhere
    list_.Take({folder_ / "d.smf", folder_ / "d.smf"});
    EXPECT_FALSE(list_.Waits());
    EXPECT_EQ(Step(folder_ / "d.smf", 1), "e.midi 5/5"); // one alone stands for its folder
}

} // namespace
} // namespace tracksmith::app
