#include "app/settings/file_association.h"

#include <gtest/gtest.h>

#include "support/scratch_settings.h"

namespace tracksmith::settings {
namespace {

class FileAssociationTest : public testing::Test {
protected:
    FileAssociationTest() {
        registry_.SetRootKey(RootKey::CurrentUser);
        registry_.SetWriteFlag(true);
    }
    ~FileAssociationTest() override {
        registry_.OpenKey("");
        registry_.DeleteValue("Software", DeleteScope::ValueAndKey);
        registry_.CloseKey();
    }
    FileAssociationTest(const FileAssociationTest&) = delete;
    FileAssociationTest& operator=(const FileAssociationTest&) = delete;

    /// The text of a key's value, "-" when there is none.
    std::string Read(const std::string& key, const std::string& name = "") {
        registry_.OpenKey("Software\\Classes\\" + key);
        std::string text = registry_.ValueExists(name) ? registry_.ReadStr(name) : "-";
        registry_.CloseKey();
        return text;
    }
    void Write(const std::string& key, const std::string& name, const std::string& text) {
        registry_.OpenKey("Software\\Classes\\" + key);
        registry_.WriteStr(name, text);
        registry_.CloseKey();
    }

    test::ScratchSettings scratch_;
    TMyRegistry registry_{scratch_.Location()};
    FileAssociation association_{std::filesystem::path(u"C:\\Für Musik\\tracksmith.exe"),
                                 scratch_.Location()};
};

TEST_F(FileAssociationTest, IsOfferedBesideOthersAndTakenBack) {
    Write(".mid", "", "Other.Song");
    Write(".mid\\OpenWithProgids", "Other.Song", "");
    EXPECT_FALSE(association_.Offered());
    ASSERT_TRUE(association_.Offer(Language::German));
    EXPECT_TRUE(association_.Offered());
    EXPECT_EQ(Read("Tracksmith.Song"), "MIDI-Song");
    EXPECT_EQ(Read("Tracksmith.Song\\shell\\open\\command"),
              "\"C:\\F\xC3\xBCr Musik\\tracksmith.exe\" \"%1\"");
    EXPECT_EQ(Read(".mid\\OpenWithProgids", "Tracksmith.Song"), "");
    EXPECT_EQ(Read(".kar\\OpenWithProgids", "Tracksmith.Song"), "");
    EXPECT_EQ(Read(".mid"), "Other.Song"); // never seized

    FileAssociation moved(std::filesystem::path(u"D:\\tracksmith.exe"), scratch_.Location());
    EXPECT_FALSE(moved.Offered());

    ASSERT_TRUE(association_.TakeBack());
    EXPECT_FALSE(association_.Offered());
    EXPECT_EQ(Read("Tracksmith.Song"), "-");
    EXPECT_EQ(Read("Tracksmith.Song\\shell\\open\\command"), "-");
    EXPECT_EQ(Read(".mid\\OpenWithProgids", "Tracksmith.Song"), "-");
    EXPECT_EQ(Read(".mid\\OpenWithProgids", "Other.Song"), "");
    EXPECT_TRUE(association_.TakeBack()); // of nothing
}

} // namespace
} // namespace tracksmith::settings
