#include "base/display_text.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>

#include "base/system_reason.h"

namespace tracksmith {
namespace {

struct Utf8Row {
    std::string bytes;
    bool valid;
};

class Utf8Test : public testing::TestWithParam<Utf8Row> {};

TEST_P(Utf8Test, IsTold) {
    EXPECT_EQ(IsUtf8(GetParam().bytes), GetParam().valid);
    EXPECT_TRUE(IsUtf8(DisplayText(GetParam().bytes)));
}

INSTANTIATE_TEST_SUITE_P(
    Sequences, Utf8Test,
    testing::Values(Utf8Row{"", true}, Utf8Row{"plain", true}, Utf8Row{"Gr\xC3\xB6\xC3\x9F", true},
                    Utf8Row{"\xE2\x82\xAC", true}, Utf8Row{"\xF0\x9F\x8E\xB9", true},
                    Utf8Row{"\xF4\x8F\xBF\xBF", true}, Utf8Row{"\xF4\x90\x80\x80", false},
                    Utf8Row{"\xC0\xAF", false}, Utf8Row{"\xE0\x80\xAF", false},         // overlong
                    Utf8Row{"\xF0\x80\x80\xAF", false}, Utf8Row{"\xED\xA0\x80", false}, // surrogate
                    Utf8Row{"\x80", false}, Utf8Row{"\xC3", false}, Utf8Row{"\xC3(", false},
                    Utf8Row{"\xE2\x82", false}, Utf8Row{"Gr\xF6\xDF", false},
                    Utf8Row{"\xFF\xFE", false}));

TEST(DisplayText, OtherBytesAreReadAsWindows1252) {
    EXPECT_EQ(DisplayText("Gr\xF6\xDF\x65 \x80"), "Größe €");
    EXPECT_EQ(DisplayText("\xC3\xB6"), "ö");
    EXPECT_EQ(DisplayText("\xC3\xB6", TextEncoding::Windows1252), "Ã¶");
    EXPECT_EQ(DisplayText("a\x81"), "a\xEF\xBF\xBD"); // unassigned
}

TEST(DisplayText, NothingHiddenOrReorderingIsShown) {
    EXPECT_EQ(DisplayText(std::string("a\0b\n\x1B[2J\x7F", 9)), "a b  [2J ");
    EXPECT_EQ(DisplayText("a\xE2\x80\xAE"
                          "b"),
              "a b"); // right-to-left override
    EXPECT_EQ(DisplayText("\xEF\xBB\xBF"
                          "x"),
              " x");
}

TEST(DisplayText, IsCutAfterCharactersNotBytes) {
    EXPECT_EQ(DisplayText("äöüß", TextEncoding::Utf8, 3), "äöü…");
    EXPECT_EQ(DisplayText("äöü", TextEncoding::Utf8, 3), "äöü");
    const std::string path(3000, 'x');
    EXPECT_EQ(DisplayText(path).size(), 203U);
    EXPECT_EQ(DisplayPath(path + "\n"), path + " ");
}

TEST(SystemReason, IsToldInPlainWordsOrElseAsTheSystemDoes) {
    const auto reason = [](std::errc condition, Language language) {
        return SystemReason(std::make_error_code(condition), language);
    };
    EXPECT_EQ(SystemReason({}, Language::German), "");
    EXPECT_EQ(reason(std::errc::no_space_on_device, Language::German), "Der Datenträger ist voll.");
    EXPECT_EQ(reason(std::errc::permission_denied, Language::English),
              "The permission for that is missing.");
    EXPECT_EQ(reason(std::errc::address_in_use, Language::English),
              "The system says: " + std::make_error_code(std::errc::address_in_use).message());
#ifdef EDQUOT
    EXPECT_EQ(SystemReason({EDQUOT, std::system_category()}, Language::English),
              "The disk is full.");
#endif
}

} // namespace
} // namespace tracksmith
