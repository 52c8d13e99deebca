#include "app/cli/texts.h"

#include <gtest/gtest.h>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace tracksmith::cli::texts {
namespace {

constexpr Language kEnglish = Language::English;

TEST(TextsTest, OneIsNotSeveral) {
    EXPECT_EQ(FindingCounts(kEnglish, {1, 2, 0}), "1 error, 2 warnings");
    EXPECT_EQ(FindingCounts(kEnglish, {2, 1, 1}), "2 errors, 1 warning, 1 hint");
    EXPECT_EQ(FindingCounts(kEnglish, {0, 0, 0}), "nothing found");
}

TEST(TextsTest, WhatIsNotThereIsNotMentioned) {
    EXPECT_EQ(RevoicingCounts(kEnglish, 3, 5, 0, 0), "3 of 5 program changes replaced");
    EXPECT_EQ(RevoicingCounts(kEnglish, 0, 2, 0, 1),
              "0 of 2 program changes replaced; 1 with an earlier one's bank select (--add-banks)");
    EXPECT_EQ(VoiceCounts(kEnglish, 5, 0), "5 own");
    EXPECT_EQ(VoicesImported(kEnglish, "Pa700", 9, 0), "Pa700: 9 voices taken");
    EXPECT_EQ(VoicesImported(kEnglish, "Pa700", 9, 1),
              "Pa700: 9 voices taken, 1 incomplete left out");
    EXPECT_EQ(Rendered(kEnglish, "a.wav", 61'000, -1.5, 0), "a.wav (1:01, peak -1.5 dBFS)");
    EXPECT_EQ(Rendered(kEnglish, "a.wav", 61'000, 0, 1),
              "a.wav (1:01, peak 0.0 dBFS, 1 samples limited)");
    EXPECT_EQ(Rendered(kEnglish, "a.wav", 0, -std::numeric_limits<double>::infinity(), 0),
              "a.wav (0:00)"); // silence
}

TEST(TextsTest, LongListsAreCutAndEmptyOnesLeftOut) {
    const std::vector<std::string> nine{"A", "B", "C", "D", "E", "F", "G", "H", "I"};
    EXPECT_EQ(NotOneInstrument(kEnglish, "x", nine),
              "Several instruments are called so: x: A, B, C, D, E, F, G, H, …");
    EXPECT_EQ(NotOneInstrument(kEnglish, "x", std::span(nine).first(8)),
              "Several instruments are called so: x: A, B, C, D, E, F, G, H");
    EXPECT_EQ(NotOneInstrument(kEnglish, "x", {}), "No instrument is called so: x");
    EXPECT_EQ(NotOneVoice(kEnglish, "x", {}), "No voice matches x");
    EXPECT_EQ(NotOneVoice(kEnglish, "x", std::span(nine).first(2)), "Several voices match x: A, B");
    EXPECT_EQ(NotOnePort(kEnglish, true, "x", false, {}), "No MIDI input is called x");
    EXPECT_EQ(NotOnePort(kEnglish, false, "x", true, std::span(nine).first(2)),
              "Several MIDI outputs fit x. There are: A, B");
}

} // namespace
} // namespace tracksmith::cli::texts
