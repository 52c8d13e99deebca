#include "instruments/picker/voice_memory.h"

#include <gtest/gtest.h>

#include "support/scratch_settings.h"

namespace tracksmith::instruments {
namespace {

constexpr VoiceKey kVoice{false, {8, 34, 0}};
constexpr VoiceKey kKit{true, {8, 34, 0}};

TEST(VoiceMemory, KeepsVoicesOfEachInstrument) {
    test::ScratchSettings scratch;
    {
        VoiceMemory memory(scratch.Store(), "Yamaha Genos");
        EXPECT_TRUE(memory.ToggleFavourite(kVoice));
        EXPECT_TRUE(memory.ToggleFavourite(kKit));
        EXPECT_TRUE(memory.AddLastUsed(kVoice));
        EXPECT_TRUE(memory.AddLastUsed(kKit));
        EXPECT_TRUE(memory.AddLastUsed(kVoice));
    }
    VoiceMemory memory(scratch.Store(), "Yamaha Genos");
    EXPECT_EQ(memory.Favourites(), (std::vector{kVoice, kKit}));
    EXPECT_EQ(memory.LastUsed(), (std::vector{kVoice, kKit}));
    EXPECT_TRUE(memory.IsFavourite(kKit));
    EXPECT_TRUE(memory.ToggleFavourite(kKit));
    EXPECT_FALSE(memory.IsFavourite(kKit));
    EXPECT_TRUE(VoiceMemory(scratch.Store(), "Yamaha Genos2").Favourites().empty());
    EXPECT_EQ(VoiceMemory(scratch.Store(), "Yamaha Genos").Favourites(), std::vector{kVoice});
}

TEST(VoiceMemory, BrokenSettingsAndFullListsLoseNothingElse) {
    test::ScratchSettings scratch;
    scratch.Store().WriteStrToUserRegistrySubdir(
        "X", "FavouriteVoices", "8.34.0 k8.34.0  8.34 8.34.128 8.34.0.1 x -1.0.0 8.34.0 1.2.3 k");
    EXPECT_EQ(VoiceMemory(scratch.Store(), "X").Favourites(),
              (std::vector{kVoice, kKit, VoiceKey{false, {1, 2, 3}}}));
    scratch.Store().WriteIntToUserRegistrySubdir("X", "LastUsedVoices", 5);
    VoiceMemory memory(scratch.Store(), "X");
    EXPECT_TRUE(memory.LastUsed().empty());
    for (std::uint8_t program = 0; program < 30; ++program) {
        memory.AddLastUsed({false, {0, 0, program}});
    }
    EXPECT_EQ(memory.LastUsed().size(), VoiceMemory::kMostLastUsed);
    EXPECT_EQ(memory.LastUsed().front().numbers.program, 29);
    for (std::size_t i = memory.Favourites().size(); i < VoiceMemory::kMostFavourites; ++i) {
        ASSERT_TRUE(memory.ToggleFavourite(
            {false, {9, static_cast<std::uint8_t>(i / 128), static_cast<std::uint8_t>(i % 128)}}));
    }
    EXPECT_FALSE(memory.ToggleFavourite({true, {0, 0, 0}}));
    EXPECT_TRUE(memory.ToggleFavourite(kVoice)); // taken back
    EXPECT_TRUE(memory.ToggleFavourite({true, {0, 0, 0}}));
}

} // namespace
} // namespace tracksmith::instruments
