#include <new>

#include "sysex_fixture.h"

#include "instruments/sysex/insert_gs.h"
#include "instruments/sysex/insert_gs_effects.h"
#include "instruments/sysex/insert_outputs.h"
#include "instruments/sysex/insert_reset.h"
#include "instruments/sysex/insert_setup.h"
#include "instruments/sysex/remove_sysex.h"
#include "instruments/sysex/sysex_track.h"

namespace tracksmith::test {
namespace {

using namespace instruments;
using Texts = std::vector<std::string>;
using Operation = void (*)(song::Song&, SysexSession&);

const std::string kGm = "F0 7E 7F 09 01 F7";
const std::string kGs = "F0 41 10 42 12 40 00 7F 00 41 F7";

Texts Concat(Texts first, const Texts& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// Where the 16 rhythm placeholders of device `device` stand behind a reset at `reset`; without the
// channels of `taken`.
Texts Placeholders(int track, int reset, const char* device, const std::vector<int>& taken = {}) {
    Texts texts;
    for (int part = 0; part < 16; ++part) {
        if (std::ranges::find(taken, part) == taken.end()) {
            texts.push_back("-" + std::to_string(track) + "@" +
                            std::to_string(reset + 50 + 2 * part) + " 41" + device +
                            "42124010150000F7");
        }
    }
    return texts;
}

struct SetUpCase {
    const char* name;
    Operation operation;
    Texts messages;
};

class SetUp : public testing::TestWithParam<SetUpCase> {};

// On a song without messages, on one that has them already, and twice.
TEST_P(SetUp, StandsAtItsTickOnce) {
    Prepared song(Sixteen({}));
    EXPECT_EQ(song.Run(GetParam().operation).List(), GetParam().messages);
    EXPECT_EQ(song.Run(GetParam().operation).List(), GetParam().messages);
    EXPECT_EQ(song.session.sysexTrack, 10);
    Prepared reloaded(Save(song.song));
    EXPECT_EQ(reloaded.Run(GetParam().operation).List(), GetParam().messages);
    EXPECT_TRUE(reloaded.session.changes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Operations, SetUp,
    testing::ValuesIn(std::vector<SetUpCase>{
        {"GM", InsertGMSysex, {"10@2 7E7F0901F7"}},
        {"GM2", InsertGM2Sysex, {"10@2 7E7F0903F7"}},
        {"XG", InsertXGSysex, {"10@2 43104C00007E00F7"}},
        {"KN6000", InsertKN6000Sysex, {"10@2 502C207E1F00007F00F7"}},
        {"GS", InsertGSSysex, {"10@2 4110421240007F0041F7"}},
        {"MBMusic", InsertMBMusicSysex, {"10@2 4100421240007F0041F7"}},
        {"MP11", InsertMP11Sysex, {"10@2 4100421240007F0041F7"}},
        {"GSReverb", InsertGSReverbSysex, {"10@84 411042124001345D2EF7"}},
        {"Ketron", InsertKetronSysex, {"10@2 267B0E0001F7"}},
        {"SD1000", InsertKetronSD1000Sysex, {"10@2 267B0E0001F7", "10@4 267B0F000000F7"}},
        {"Limex", InsertLimexSysex, {"10@2 7E7F0901F7", "10@4 4100421240111500F7"}},
        {"MotifES", InsertMotifESInsertsSysex, {"10@95 43107F003600600000017FF7"}},
        {"MotifXF", InsertMotifXFInsertsSysex, {"10@95 43107F1236004D0000017FF7"}},
        {"MotifXS", InsertMotifXSInsertsSysex, {"10@95 43107F0336004D0000017FF7"}},
        {"SonicCell", InsertSonicCellReverbLevelSysex, {"10@50 411000002512100006017F7AF7"}}}),
    [](const auto& suite) { return suite.param.name; });

struct ResetCase {
    const char* name;
    std::vector<Message> messages; // of track 10
    Texts after;
};

class ResetPlace : public testing::TestWithParam<ResetCase> {};

TEST_P(ResetPlace, FollowsTheRules) {
    const ResetCase& place = GetParam();
    Prepared song(Sixteen(place.messages, 10));
    EXPECT_EQ(song.Run(InsertGMSysex).List(), place.after);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ResetPlace,
    testing::ValuesIn(std::vector<ResetCase>{
        // 8 quarter notes of 480 ticks are searched.
        {"AtTheEndOfTheSearch", {{3840, kGm}}, {"10@3840 7E7F0901F7"}},
        {"BehindTheSearch", {{3841, kGm}}, {"10@2 7E7F0901F7", "10@3841 7E7F0901F7"}},
        {"BehindOthersOfTick2",
         {{2, "F0 7D 01 F7"}, {2, "F0 7D 02 F7"}, {3, "F0 7D 03 F7"}},
         {"10@2 7D01F7", "10@2 7D02F7", "10@2 7E7F0901F7", "10@3 7D03F7"}},
        {"OnlyExactBytesCount",
         {{0, "F0 7E 7F 09 01"}, {1, "F0 7E 7F 09 02 F7"}},
         {"10@0 7E7F0901", "10@1 7E7F0902F7", "10@2 7E7F0901F7"}}}),
    [](const auto& suite) { return suite.param.name; });

TEST(InsertReset, AMessageOfAnotherTrackMakesThatTheSysexTrack) {
    Prepared song(Sixteen({{960, kGm}}, 7));
    EXPECT_EQ(song.Run(InsertGMSysex).List(), Texts{"7@960 7E7F0901F7"});
    EXPECT_EQ(song.session.sysexTrack, 7);
}

TEST(InsertReset, ATrackWhoseEventsLieBehindTick2ReceivesNone) {
    MidiFileBuilder file;
    file.Track(TrackBuilder().Note(3, 0, 60, 100).NoteOff(90, 0, 60).End());
    Prepared song(file.Build());
    EXPECT_TRUE(song.Run(InsertGMSysex).List(true).empty());
    EXPECT_EQ(song.Run(InsertKetronSysex).List(), Texts{"0@2 267B0E0001F7"});
}

TEST(InsertReset, SearchMovesAnEarlyEndOfTrackToTheSongsLength) {
    Prepared song(Sixteen({}));
    song.song.songLength = 2'000;
    for (song::Track& track : song.song.tracks) {
        track.last->tick = 1'000;
    }
    song.song.tracks[4].ignored = 1;
    InsertGMSysex(song.song, song.session);
    for (std::size_t i = 0; i < song.song.tracks.size(); ++i) {
        EXPECT_EQ(song.song.tracks[i].last->tick, i == 4 ? 1'000 : 2'000) << i;
    }
}

struct TrackCase {
    const char* name;
    int tracks;
    bool gmBeforeGs;
    bool fixedTrack;
    int defaultTrack;
    int callingTrack;
    int chosen;
};

class TrackChoice : public testing::TestWithParam<TrackCase> {};

TEST_P(TrackChoice, FollowsTheRules) {
    const TrackCase& wanted = GetParam();
    MidiFileBuilder file;
    for (int i = 0; i < wanted.tracks; ++i) {
        file.Track(TrackOf(i, {})); // track 9 is the one of channel 10
    }
    Prepared song(file.Build(), {.gmBeforeGs = wanted.gmBeforeGs,
                                 .fixedTrack = wanted.fixedTrack,
                                 .defaultTrack = wanted.defaultTrack});
    song.session.callingTrack = wanted.callingTrack;
    EXPECT_EQ(ChooseSysexTrack(song.song, song.session), wanted.chosen);
}

INSTANTIATE_TEST_SUITE_P(Rules, TrackChoice,
                         testing::Values(TrackCase{"Single", 1, true, true, 4, 3, 0},
                                         TrackCase{"Ten", 16, false, false, 4, 3, 10},
                                         TrackCase{"TenMissing", 10, false, false, 4, 3, 0},
                                         TrackCase{"Drums", 16, true, true, 4, 3, 9},
                                         TrackCase{"NoDrums", 8, true, true, 4, 3, 4},
                                         TrackCase{"Caller", 16, false, true, 4, 3, 3},
                                         TrackCase{"Default", 16, false, true, 4, -1, 4},
                                         TrackCase{"TooHigh", 16, false, true, 16, -1, 0},
                                         TrackCase{"Negative", 16, false, true, -2, -1, 0}),
                         [](const auto& suite) { return suite.param.name; });

TEST(InsertGS, PutsAPlaceholderForEveryPart) {
    Prepared song(Sixteen({}));
    const Texts all = Concat({"10@2 4110421240007F0041F7"}, Placeholders(10, 2, "10"));
    EXPECT_EQ(song.Run(InsertGSSysex).List(true), all);
    EXPECT_EQ(song.session.insertionTick, 2);
    for (const song::EventLink event : song.session.partEvents) {
        EXPECT_EQ(event->length, 0);
    }
    EXPECT_EQ(song.session.changes.size(), 1U);
    EXPECT_EQ(song.Run(InsertGSSysex).List(true), all);
}

// Slots of parts: nibble 0 is channel 10, 1 to 9 are channels 1 to 9, A to F are 11 to 16.
TEST(InsertGS, MovesTheLastRhythmMessageOfEachPart) {
    Prepared song(Sixteen({{0, "F0 41 10 42 12 40 10 15 01 1A F7"},
                           {5, "F0 41 10 42 12 40 10 15 02 19 F7"},
                           {5, "F0 41 10 42 12 40 11 15 01 19 F7"},
                           {5, "F0 41 10 42 12 40 19 15 02 10 F7"},
                           {6, "F0 41 10 42 12 40 1F 15 01 0B F7"},
                           {7, "F0 41 00 42 12 40 1F 15 01 0B F7"},
                           {8, "F0 41 10 42 12 40 2F 15 01 7B F7"},
                           {9, "F0 41 10 42 12 40 1A 15 01 10 00 F7"},
                           {5000, "F0 41 10 42 12 40 1B 15 01 0F F7"}}));
    song.Run(InsertGSSysex);
    const Texts live{
        "3@7 41004212401F15010BF7",    "3@8 41104212402F15017BF7",   "3@9 41104212401A15011000F7",
        "3@5000 41104212401B15010FF7", "10@2 4110421240007F0041F7",  "10@52 411042124011150119F7",
        "10@68 411042124019150210F7",  "10@70 411042124010150219F7", "10@82 41104212401F15010BF7"};
    EXPECT_EQ(song.List(), live);
    EXPECT_EQ(song.session.drumMap,
              (std::array<std::uint8_t, 16>{1, 0, 0, 0, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(song.session.partEvents[9]->tick, 70);
    EXPECT_EQ(song.session.partEvents[10]->length, 0);
    const Texts all = song.List(true);
    EXPECT_EQ(all.size(), live.size() + 5 + 12); // 5 moved away, 12 placeholders
    EXPECT_EQ(song.Run(InsertGSSysex).List(true), all);
    Prepared reloaded(Save(song.song));
    EXPECT_EQ(reloaded.Run(InsertGSSysex).List(), live);
}

TEST(InsertGS, AResetOfTheSongIsKeptAndNotOvertaken) {
    Prepared song(Sixteen({{240, kGs}, {480, "F0 41 10 42 12 40 10 15 02 19 F7"}}));
    song.Run(InsertGSSysex);
    EXPECT_EQ(song.List(), (Texts{"3@240 4110421240007F0041F7", "3@480 411042124010150219F7"}));
    EXPECT_EQ(song.session.sysexTrack, 3);
    EXPECT_EQ(song.session.drumMap[9], 2);
    EXPECT_EQ(song.session.partEvents[9]->tick, 480);
}

TEST(InsertGS, StandsBehindGmWhenTheOptionSaysSo) {
    Prepared song(Sixteen({}), {.gmBeforeGs = true});
    song.Run(InsertGMSysex).Run(InsertGSSysex).Run(InsertGSReverbSysex);
    // Track 10 holds channel 10.
    EXPECT_EQ(song.List(), (Texts{"10@2 7E7F0901F7", "10@62 4110421240007F0041F7",
                                  "10@144 411042124001345D2EF7"}));
    EXPECT_EQ(song.session.partEvents[15]->tick, 142);
}

TEST(InsertGS, OneQuarterOfOneTickIsEnough) {
    MidiFileBuilder file(1, 1);
    file.Track(TrackOf(0, {{60, "F0 41 10 42 12 40 10 15 02 19 F7"}}));
    Prepared song(file.Build());
    const Texts all = song.Run(InsertGSSysex).List(true);
    EXPECT_EQ(song.List(), (Texts{"0@2 4110421240007F0041F7", "0@70 411042124010150219F7"}));
    EXPECT_EQ(song.Run(InsertGSSysex).List(true), all);
}

struct EffectCase {
    const char* name;
    Operation reset;
    Operation effect;
    std::vector<Message> messages; // of track 3
    Texts after;                   // of all but the reset
};

class GsEffect : public testing::TestWithParam<EffectCase> {};

TEST_P(GsEffect, KeepsWhatTheSongSetsBehindTheReset) {
    Prepared song(Sixteen(GetParam().messages));
    song.Run(GetParam().reset).Run(GetParam().effect);
    Texts after = song.List();
    std::erase_if(after, [](const std::string& text) { return text.ends_with("40007F0041F7"); });
    EXPECT_EQ(after, GetParam().after);
    const Texts all = song.List(true);
    EXPECT_EQ(song.Run(GetParam().reset).Run(GetParam().effect).List(true), all);
}

INSTANTIATE_TEST_SUITE_P(Effects, GsEffect,
                         testing::ValuesIn(std::vector<EffectCase>{
                             {"DelayMovesInItsOrder",
                              InsertGSSysex,
                              InsertGSDelaySysex,
                              {{0, "F0 41 10 42 12 40 01 58 10 57 F7"},
                               {0, "F0 41 10 42 12 40 01 58 20 47 F7"},
                               {1, "F0 41 10 42 12 40 01 50 03 6C F7"},
                               {2, "F0 41 10 42 12 40 01 5B 03 61 F7"},
                               {3, "F0 41 10 42 12 40 01 51 03 6B F7"}},
                              {"3@2 4110421240015B0361F7", "3@3 41104212400151036BF7",
                               "10@86 411042124001582047F7", "10@88 41104212400150036CF7"}},
                             {"AfterTheSongsResetItStays",
                              InsertGSSysex,
                              InsertGSDelaySysex,
                              {{0, kGs}, {1, "F0 41 10 42 12 40 01 58 10 57 F7"}},
                              {"3@1 411042124001581057F7"}},
                             {"ReverbOfTheSong",
                              InsertGSSysex,
                              InsertGSReverbSysex,
                              {{0, "F0 41 10 42 12 40 01 34 40 4B F7"}},
                              {"10@84 41104212400134404BF7"}},
                             {"Mp11TimeAndFeedback",
                              InsertMP11Sysex,
                              InsertMP11DelaySysex,
                              {{0, "F0 41 00 42 12 40 01 59 10 56 F7"},
                               {0, "F0 41 00 42 12 40 01 58 10 57 F7"},
                               {1, "F0 41 00 42 12 40 01 52 03 6A F7"}},
                              {"3@0 410042124001581057F7", "10@86 410042124001591056F7",
                               "10@88 41004212400152036AF7"}},
                         }),
                         [](const auto& suite) { return suite.param.name; });

TEST(InsertSetUp, TakesItsTickFromTheCaller) {
    Prepared song(Sixteen({}));
    song.session.insertionTick = 480;
    EXPECT_EQ(song.Run(InsertKetronSD1000Sysex).List(),
              (Texts{"10@480 267B0E0001F7", "10@482 267B0F000000F7"}));
}

TEST(InsertSetUp, ASecondMessageOfItsKindIsEnough) {
    Prepared song(
        Sixteen({{30, "F0 26 7B 0F 00 11 22 F7"}, {30, "F0 41 00 42 12 40 11 15 01 19 F7"}}));
    song.Run(InsertKetronSD1000Sysex).Run(InsertLimexSysex);
    EXPECT_EQ(song.List(), (Texts{"3@30 267B0F001122F7", "3@30 410042124011150119F7",
                                  "10@2 267B0E0001F7", "10@2 7E7F0901F7"}));
}

TEST(InsertSetUp, OutputsOfAnIntegra7ReplaceThoseOfTheSong) {
    SysexOptions options;
    options.partOutputs[0] = 1;
    options.partOutputs[15] = 4;
    Prepared song(Sixteen({{0, "F0 41 10 00 00 64 12 18 00 20 29 02 1D F7"},
                           {0, "F0 41 10 00 00 64 12 18 00 21 29 02 1C F7"}}),
                  options);
    const Texts after{"3@0 41100000641218002129021CF7", "10@2 41100000641218002029011EF7",
                      "10@32 41100000641218002F29040CF7"};
    EXPECT_EQ(song.Run(InsertIntegra7OutputsSysex).List(), after);
    EXPECT_EQ(song.Run(InsertIntegra7OutputsSysex).List(), after);
}

TEST(InsertSetUp, OutputsOfAMotifRackXsAreItsOwnNumbers) {
    SysexOptions options;
    options.partOutputs[2] = 0x0F;
    Prepared song(Sixteen({{0, "F0 43 10 7F 03 37 02 1F 08 F7"}}), options);
    EXPECT_EQ(song.Run(InsertMotifXSOutputsSysex).List(), (Texts{"10@6 43107F0337021F0FF7"}));
}

#ifndef _WIN32 // where taking the range would take the memory of everybody

// Takes the whole range of events, and then what the song's own chunk still has.
class NoMemory {
public:
    explicit NoMemory(song::Song& song) {
        for (std::size_t bytes = arena_.Capacity(); bytes >= 4'096; bytes /= 2) {
            UntilItThrows([&] { taken_.push_back(arena_.Take(bytes)); });
        }
        UntilItThrows([&] { song.pool.NewEvent(); });
    }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;
    ~NoMemory() {
        for (const auto& chunk : taken_) {
            arena_.GiveBack(chunk);
        }
    }

private:
    static void UntilItThrows(auto work) {
        try {
            for (;;) {
                work();
            }
        } catch (const std::bad_alloc&) {
        }
    }

    song::EventArena& arena_ = song::EventArena::Instance();
    std::vector<song::EventArena::Chunk> taken_;
};

TEST(InsertSetUp, MemoryThatEndsIsShownAndRaised) {
    const std::pair<Language, std::string> wordings[] = {
        {Language::German, "Speicherzuordnungsfehler: Bitte mehr Speicher!"},
        {Language::English, "Error allocating memory!"}};
    for (const auto& [language, words] : wordings) {
        Prepared prepared(Sixteen({}));
        RecordingMessageHost host(language);
        SysexSession session({}, host);
        const NoMemory none(prepared.song);
        try {
            InsertGSSysex(prepared.song, session);
            ADD_FAILURE() << "no error";
        } catch (const EMidiError& error) {
            EXPECT_EQ(error.what(), words);
        }
        EXPECT_EQ(host.messages, std::vector<std::string>{words});
        EXPECT_EQ(song::CheckSong(prepared.song), "");
        EXPECT_TRUE(prepared.List(true).empty());
    }
}

#endif

TEST(RemoveSysex, KN6000AndRolandGSAreExact) {
    Prepared song(Sixteen({{10, "F0 50 2C 20 7E 1F 00 00 7F 00 F7"},
                           {20, "F0 50 2C 20 7E 1F 00 00 7F 01 F7"},
                           {5000, kGs},
                           {5001, "F0 41 11 42 12 40 00 7F 00 41 F7"}}));
    song.Run(RemoveKN6000Sysex).Run(RemoveRolandGSSysex);
    EXPECT_EQ(song.List(true),
              (Texts{"-3@10 502C207E1F00007F00F7", "3@20 502C207E1F00007F01F7",
                     "-3@5000 4110421240007F0041F7", "3@5001 4111421240007F0041F7"}));
}

} // namespace
} // namespace tracksmith::test
