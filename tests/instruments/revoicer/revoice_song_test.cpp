#include "instruments/revoicer/revoice_song.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/song_assert.h"

#include "instruments/picker/patch_state.h"
#include "instruments/revoicer/bank_selects.h"

namespace tracksmith::instruments {
namespace {

using tracksmith::test::DecodedSong;
using tracksmith::test::MidiFileBuilder;
using tracksmith::test::TrackBuilder;

RevoiceRule EveryChannel(bool comparesLsb = true) {
    RevoiceRule rule;
    rule.channels.set();
    rule.comparesLsb = comparesLsb;
    return rule;
}

RevoiceEntry Entry(VoiceNumbers source, VoiceNumbers target) {
    return {target, "new", source, "old"};
}

TrackBuilder Track() {
    return TrackBuilder();
}

// Bank selects and program change of a channel, each 10 ticks behind what was before.
TrackBuilder& Voice(TrackBuilder& track, int channel, VoiceNumbers numbers) {
    return track.Short(10, 0xB0 | channel, 0, numbers.msb)
        .Short(0, 0xB0 | channel, 32, numbers.lsb)
        .Program(0, channel, numbers.program);
}

DecodedSong Decode(std::vector<TrackBuilder> tracks) {
    MidiFileBuilder file;
    for (TrackBuilder& track : tracks) {
        file.Track(track.End(4000));
    }
    return DecodedSong(file.Build());
}

// All tracks after revoicing, joined by " | ", and what stopped it.
std::string Revoiced(const std::vector<TrackBuilder>& tracks,
                     const std::vector<RevoiceEntry>& entries, const RevoiceRule& rule) {
    DecodedSong decoded = Decode(tracks);
    const Revoicing plan = PlanRevoicing(decoded.song, entries, rule);
    ApplyRevoicing(decoded.song, plan);
    EXPECT_EQ(song::CheckSong(decoded.song), "");
    std::string text;
    for (std::size_t track = 0; track < decoded.song.tracks.size(); ++track) {
        text += (track == 0 ? "" : " | ") + decoded.List(track);
    }
    return plan.missingLsb ? text + " stop " + std::to_string(*plan.missingLsb) : text;
}

TEST(RevoiceSong, RewritesBankSelectsAndProgram) {
    TrackBuilder track;
    Voice(track, 2, {0, 1, 24});
    Voice(track, 3, {0, 1, 24});
    Voice(track, 2, {0, 1, 25});
    const std::vector<RevoiceEntry> entries{Entry({0, 1, 24}, {8, 34, 7}),
                                            Entry({0, 1, 24}, {9, 9, 9})};
    EXPECT_EQ(Revoiced({track}, entries, EveryChannel()),
              "10 B20008; 10 B22022; 10 C207; 20 B30008; 20 B32022; 20 C307; "
              "30 B20000; 30 B22001; 30 C219");
    RevoiceRule rule;
    rule.channels.set(3);
    EXPECT_EQ(Revoiced({track}, entries, rule),
              "10 B20000; 10 B22001; 10 C218; 20 B30008; 20 B32022; 20 C307; "
              "30 B20000; 30 B22001; 30 C219");
}

TEST(RevoiceSong, OnlyBankSelectsOfTheSameTrackCount) {
    const std::vector<RevoiceEntry> entries{Entry({0, 1, 24}, {8, 34, 7})};
    EXPECT_EQ(
        Revoiced({Track().Short(0, 0xB2, 0, 0).Short(0, 0xB2, 32, 1), Track().Program(10, 2, 24)},
                 entries, EveryChannel()),
        "0 B20000; 0 B22001 | 10 C218");
    // The LSB comes first, other channels' do not count.
    EXPECT_EQ(Revoiced({Track()
                            .Short(0, 0xB2, 32, 1)
                            .Short(0, 0xB3, 0, 5)
                            .Short(0, 0xB2, 0, 0)
                            .Program(10, 2, 24)},
                       entries, EveryChannel()),
              "0 B22022; 0 B30005; 0 B20008; 10 C207");
}

TEST(RevoiceSong, GroupsThatCompareOnlyMsbAndProgram) {
    TrackBuilder track;
    Voice(track, 2, {0, 3, 24});
    const std::vector<RevoiceEntry> entries{Entry({0, 1, 24}, {8, 34, 7})};
    EXPECT_EQ(Revoiced({track}, entries, EveryChannel(true)), "10 B20000; 10 B22003; 10 C218");
    EXPECT_EQ(Revoiced({track}, entries, EveryChannel(false)), "10 B20008; 10 B22022; 10 C207");
    OutputTable outputs;
    outputs.outputs.resize(2);
    outputs.outputs[0].SetName("Roland SC-8850");
    outputs.outputs[1].SetName("Yamaha Genos");
    outputs.outputOfChannel[4] = 1;
    const RevoiceRule rule = RevoiceRuleOf(outputs);
    EXPECT_FALSE(rule.comparesLsb);
    EXPECT_EQ(rule.channels.to_ulong(), 0xFFEFU);
    outputs.outputs[0].SetName("Yamaha Genos");
    EXPECT_TRUE(RevoiceRuleOf(outputs).comparesLsb);
    EXPECT_EQ(RevoiceRuleOf(outputs).channels.to_ulong(), 0xFFFFU);
}

TEST(RevoiceSong, StopsAtAMissingLsbAndKeepsWhatWasChangedBefore) {
    TrackBuilder first;
    Voice(first, 1, {0, 0, 1});
    Voice(first, 3, {0, 0, 1});
    TrackBuilder second;
    second.Short(0, 0xB2, 0, 0).Program(0, 2, 1);
    Voice(second, 1, {0, 0, 1});
    const std::vector<RevoiceEntry> entries{Entry({0, 0, 1}, {8, 8, 8})};
    EXPECT_EQ(Revoiced({first, second}, entries, EveryChannel()),
              "10 B10008; 10 B12008; 10 C108; 20 B30000; 20 B32000; 20 C301 | "
              "0 B20000; 0 C201; 10 B10008; 10 B12008; 10 C108 stop 2");
    EXPECT_EQ(MissingLsbText(2, Language::German), "Tracksmith: Kanal 3 - Ctrl32 fehlt!");
    EXPECT_EQ(MissingLsbText(2, Language::English), "Tracksmith: channel 3 - Ctrl32 is missing!");
}

TEST(RevoiceSong, ProgramChangesThatShareABankAreCounted) {
    const std::vector<TrackBuilder> tracks{
        Track().Short(0, 0xB2, 0, 0).Short(0, 0xB2, 32, 0).Program(0, 2, 1).Program(10, 2, 2),
        Track().Program(0, 4, 1)};
    const std::vector<RevoiceEntry> entries{Entry({0, 0, 1}, {8, 8, 8}),
                                            Entry({8, 8, 2}, {9, 9, 9})};
    const Revoicing plan = PlanRevoicing(Decode(tracks).song, entries, EveryChannel());
    EXPECT_EQ(plan.programChanges, 3U);
    EXPECT_EQ(plan.withoutBank, 1U);
    EXPECT_EQ(plan.sharingBank, 1U);
    // The second one finds the bank that the first one has written.
    EXPECT_EQ(Revoiced(tracks, entries, EveryChannel()),
              "0 B20009; 0 B22009; 0 C208; 10 C209 | 0 C401");
}

TEST(RevoiceSong, MissingBankSelectsAreAddedWithTheValuesInForce) {
    DecodedSong decoded =
        Decode({Track().Short(0, 0xB2, 0, 5).Short(0, 0xB2, 32, 6),
                Track().Program(10, 2, 1).Short(5, 0xB2, 32, 7).Program(5, 2, 2).Program(0, 9, 3)});
    decoded.Timed();
    StartBanks start{};
    start[9].msb = 127;
    EXPECT_EQ(AddMissingBankSelects(decoded.song, EveryChannel(), start), 3U);
    EXPECT_EQ(song::CheckSong(decoded.song), "");
    EXPECT_EQ(decoded.List(1),
              "10 B20005; 10 B22006; 10 C201; 15 B22007; 20 B20005; 20 B22007; "
              "20 C202; 20 B9007F; 20 B92000; 20 C903");
    const Revoicing plan = PlanRevoicing(decoded.song, {}, EveryChannel());
    EXPECT_EQ(plan.withoutBank + plan.sharingBank, 0U);
    EXPECT_EQ(AddMissingBankSelects(decoded.song, EveryChannel(), start), 0U);
}

} // namespace
} // namespace tracksmith::instruments
