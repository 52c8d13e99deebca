#include "instruments/picker/voice_memory.h"

#include <gtest/gtest.h>
#include <string>

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
    EXPECT_TRUE(VoiceMemory(scratch.Store(), "X").LastUsed().empty());
    std::string many;
    for (int i = 0; i < 600; ++i) {
        many += std::to_string(i / 128) + ".9." + std::to_string(i % 128) + ' ';
    }
    scratch.Store().WriteStrToUserRegistrySubdir("Y", "FavouriteVoices", many);
    scratch.Store().WriteStrToUserRegistrySubdir("Y", "LastUsedVoices", many);
    VoiceMemory full(scratch.Store(), "Y");
    EXPECT_EQ(full.Favourites().size(), VoiceMemory::kMostFavourites);
    EXPECT_FALSE(full.ToggleFavourite(kKit));
    EXPECT_TRUE(full.ToggleFavourite({false, {0, 9, 0}})); // taken back
    EXPECT_TRUE(full.ToggleFavourite(kKit));
    EXPECT_TRUE(full.AddLastUsed(kKit));
    EXPECT_EQ(full.LastUsed().size(), VoiceMemory::kMostLastUsed);
    EXPECT_EQ(full.LastUsed().front(), kKit);
}

} // namespace
} // namespace tracksmith::instruments
