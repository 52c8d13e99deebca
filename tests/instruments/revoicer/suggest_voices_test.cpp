#include "instruments/revoicer/suggest_voices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

#include "instruments/revoicer/voice_words.h"
#include "instruments/voices/voice_fixture.h"

namespace tracksmith::instruments {
namespace {

using Words = std::vector<std::string>;

TEST(SuggestVoices, WordsOfNames) {
    EXPECT_EQ(VoiceWords("NylonGt 2 (Live!)"), (Words{"nylon", "guitar", "live"}));
    EXPECT_EQ(VoiceWords("80sBrass"), (Words{"s", "brass"}));
    EXPECT_EQ(VoiceWords("CFX ConcertGrand"), (Words{"cfx", "concert", "grand"}));
    EXPECT_EQ(VoiceWords("E.Piano/Syn.Str"), (Words{"electric", "piano", "synth", "strings"}));
    EXPECT_EQ(VoiceWords("70sVintageEP"), (Words{"s", "vintage", "electric", "piano"}));
    EXPECT_TRUE(VoiceWords(" 12 / 3 ").empty());
}

TEST(SuggestVoices, TheInstrumentsOwnVoicesComeFirst) {
    const tracksmith::test::TemporaryFolder folder;
    test::PutText(folder.Path() / "087-a.tsv",
                  test::TableOf("GM\tGuitar\t0\t0\t24\tNylon Guitar\n"
                                "Panel\tBass\t8\t1\t32\tNylonBass\n"
                                "Panel\tGuitar\t8\t2\t24\tSteelGuitar\n"
                                "Panel\tGuitar\t8\t3\t24\tNylonGuitar (MegaVoice)\n"
                                "Panel\tGuitar\t8\t4\t24\tNylonGt\n"
                                "Panel\tGuitar\t8\t5\t24\tNylonGuitar (Live!)\n"
                                "Drums\tKits\t127\t0\t0\tStandardKit\n"
                                "Drums\tKits\t127\t0\t40\tBrushKit\n"));
    const VoiceTables tables({folder.Path()});
    const VoiceSuggester suggester(tables, 87);
    const auto names = [&](const WantedVoice& wanted) {
        Words found;
        for (const SuggestedVoice& suggested : suggester.Suggest(wanted, 3)) {
            found.emplace_back(suggested.voice->name);
        }
        return found;
    };
    EXPECT_EQ(names({false, 24, ""}), (Words{"NylonGuitar (Live!)", "NylonGt", "Nylon Guitar"}));
    EXPECT_EQ(names({false, 25, "Steel Guitar"}).at(0), "SteelGuitar");
    EXPECT_EQ(names({true, 40, ""}), (Words{"BrushKit"}));
    EXPECT_EQ(names({true, 1, ""}), (Words{"StandardKit"}));
    EXPECT_TRUE(names({false, 56, ""}).empty());
    EXPECT_FALSE(VoiceSuggester(tables, 92).HasVoices());
    const WantedVoice nylon{false, 24, "Nylon Guitar"};
    EXPECT_EQ(suggester.NearnessOf(nylon, {8, 4, 24}), 1); // by its own name
    EXPECT_EQ(suggester.Suggest(nylon, 1).at(0).nearness, 1);
    const auto bass = suggester.NearnessOf(nylon, {8, 1, 32});
    const auto steel = suggester.NearnessOf(nylon, {8, 2, 24});
    ASSERT_TRUE(bass && steel);
    EXPECT_LT(*bass, *steel);
    EXPECT_LT(*steel, 0.5);
    EXPECT_FALSE(suggester.NearnessOf(nylon, {1, 1, 1}));
    EXPECT_FALSE(suggester.NearnessOf({true, 0, "Kit"}, {8, 2, 24})); // no kit
}

} // namespace
} // namespace tracksmith::instruments
