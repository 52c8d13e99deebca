#include "app/cli/play_wishes.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "app/cli/port_choice.h"

namespace tracksmith::cli {
namespace {

TEST(PlayWishesTest, Places) {
    EXPECT_EQ(ParsePlace("8"), (SongPlace{8, 1, 0}));
    EXPECT_EQ(ParsePlace("8:02"), (SongPlace{8, 2, 0}));
    EXPECT_EQ(ParsePlace("012.03.005"), (SongPlace{12, 3, 5}));
    for (const char* wrong :
         {"", ":", "8:", "0:1", "8:0", "-8", "8:-1", "1:2:3:4", "8 ", "99999999999", "a"}) {
        EXPECT_FALSE(ParsePlace(wrong)) << wrong;
    }
}

TEST(PlayWishesTest, TicksOfPlaces) {
    test::DecodedSong decoded(test::MidiFileBuilder()
                                  .Track(test::TrackBuilder().TimeSignature(1920, 3, 2))
                                  .Track(test::TrackBuilder().Note(5000, 0, 60, 9))
                                  .Build());
    const song::TimeMap& song = decoded.Timed().song;
    const auto tick = [&](const char* text) { return TickOfPlace(song, *ParsePlace(text)); };
    EXPECT_EQ(tick("1"), 0);
    EXPECT_EQ(tick("1:4.479"), 1919);
    EXPECT_EQ(tick("1:5"), std::nullopt);
    EXPECT_EQ(tick("2:3.1"), 1920 + 961);
    EXPECT_EQ(tick("2:4"), std::nullopt);
    EXPECT_EQ(tick("2:1.480"), std::nullopt);
    EXPECT_EQ(tick("4:1.209"), 5009);
    EXPECT_EQ(tick("4:1.211"), 5010); // behind the end
    EXPECT_EQ(tick("99"), 5010);
}

TEST(PlayWishesTest, Tempos) {
    test::DecodedSong decoded(
        test::MidiFileBuilder()
            .Track(test::TrackBuilder().Tempo(0, 600'000).Tempo(1, 300'000)) // 100 BPM at the start
            .Build());
    const song::TimeMap& song = decoded.Timed().song;
    const auto offset = [&](const char* text) { return TempoOffset(song, *ParseTempo(text)); };
    EXPECT_EQ(offset("+5"), 5);
    EXPECT_EQ(offset("-5"), -5);
    EXPECT_EQ(offset("90%"), -10);
    EXPECT_EQ(offset("120"), 20);
    EXPECT_EQ(offset("25"), -75);
    EXPECT_EQ(offset("24"), std::nullopt);
    EXPECT_EQ(offset("70000"), std::nullopt);
    for (const char* wrong : {"", "+", "%", "fast", "+-5", "--5", "+5%", "120.5"}) {
        EXPECT_FALSE(ParseTempo(wrong)) << wrong;
    }
}

TEST(PortChoiceTest, TheMostExactNameWins) {
    const std::vector<player::OutputDevice> outputs{
        {0, "Genos"}, {1, "Genos 2 28:0"}, {2, "MOTIF 24:0"}, {3, "MOTIF XS 24:1"}};
    const auto ports = [&](const char* name) {
        std::vector<std::size_t> found;
        for (const player::OutputDevice& output : MatchOutputs(outputs, name)) {
            found.push_back(output.port);
        }
        return found;
    };
    using Ports = std::vector<std::size_t>;
    EXPECT_EQ(ports("Genos"), Ports{0});
    EXPECT_EQ(ports("genos"), Ports{0});
    EXPECT_EQ(ports("genos 2"), Ports{1});
    EXPECT_EQ(ports("MOTIF 20:0"), Ports{2});
    EXPECT_EQ(ports("xs"), Ports{3});
    EXPECT_EQ(ports("mot"), (Ports{2, 3}));
    EXPECT_EQ(ports("Tyros"), Ports{});
}

} // namespace
} // namespace tracksmith::cli
