#include "instruments/sysex/check_sysexs.h"

#include <map>
#include <set>

#include "sysex_fixture.h"

#include "instruments/sysex/operation_table.h"
#include "instruments/sysex/sysex_family.h"

namespace tracksmith::test {
namespace {

const std::string kGm = "F0 7E 7F 09 01 F7";
const std::string kGm2 = "F0 7E 7F 09 03 F7";
const std::string kXg = "F0 43 10 4C 00 00 7E 00 F7";
const std::string kGs = "F0 41 10 42 12 40 00 7F 00 41 F7";
const std::string kGs00 = "F0 41 00 42 12 40 00 7F 00 41 F7";
const std::string kKetron = "F0 26 7B 0E 00 01 F7";
const std::string kSd1000 = "F0 26 7B 0F 00 00 00 F7";
const std::string kBigKetron = "F0 26 01 02 03 04 05 06 07 F7";
const std::string kSmallKetron = "F0 26 01 02 F7";
const std::string kXgReverb = "F0 43 10 4C 02 01 00 01 00 F7";
const std::string kXgMasterEq = "F0 43 10 4C 02 40 00 01 F7";
const std::string kXgInsert = "F0 43 10 4C 03 00 00 49 00 F7";
const std::string kXgVoice = "F0 43 10 4C 08 01 03 05 F7";
const std::string kVocal = "F0 43 10 4C 04 00 00 01 F7";
const std::string kOrgan = "F0 43 73 01 06 0B 00 00 01 06 02 07 00 00 F7";
const std::string kGsReverbMacro = "F0 41 10 42 12 40 01 30 04 0B F7";
const std::string kGsEfx = "F0 41 10 42 12 40 03 00 01 10 2C F7";
const std::string kKorgEq = "F0 42 7F 60 00 01 00 10 00 04 05 F7";
const std::string kBk9Eq = "F0 41 10 00 5C 12 30 00 00 00 00 00 00 00 00 00 00 05 16 F7";
const std::string kIntegraEq = "F0 41 10 00 00 64 12 18 00 50 03 01 14 F7";
const std::string kMotifEs = "F0 43 10 7F 00 36 00 60 00 00 01 7F F7";
const std::string kMotifXf = "F0 43 10 7F 12 36 00 4D 00 00 01 7F F7";
const std::string kMotifXs = "F0 43 10 7F 03 36 00 4D 00 00 01 7F F7";
const std::string kMotifOwn = "F0 43 10 7F 12 40 03 00 01 02 F7";
const std::string kSonic = "F0 41 10 00 00 25 12 10 00 06 01 7F 7A F7";
const std::string kKn6000 = "F0 50 2C 20 7E 1F 00 00 7F 00 F7";
const std::string kLimexPart = "F0 41 00 42 12 40 11 15 00 F7";
const std::string kVolume = "F0 7F 7F 04 01 00 60 F7";

// One message of everything, late in the song, where no Insert operation looks.
std::vector<Message> Everything() {
    std::vector<Message> messages;
    std::uint64_t tick = 4000;
    for (const std::string& hex : {kGm,       kGm2,       kXg,          kGs,        kGs00,
                                   kKetron,   kBigKetron, kSmallKetron, kXgReverb,  kXgMasterEq,
                                   kXgInsert, kXgVoice,   kVocal,       kOrgan,     kGsReverbMacro,
                                   kGsEfx,    kKorgEq,    kBk9Eq,       kIntegraEq, kMotifOwn,
                                   kKn6000,   kVolume}) {
        messages.push_back({tick, hex});
        tick += 10;
    }
    return messages;
}

struct GroupCase {
    const char* name;
    std::vector<int> instruments;
    std::vector<std::string> inserted;
    std::set<std::string> removed;
    std::vector<std::string> found;
    SysexOptions options;
};

std::ostream& operator<<(std::ostream& out, const GroupCase& group) {
    return out << group.name;
}

const std::set<std::string> kYamahas{kXg,      kXgReverb, kXgMasterEq, kXgInsert,
                                     kXgVoice, kVocal,    kOrgan,      kMotifOwn};
const std::set<std::string> kGsOf10{kGs, kGsReverbMacro, kGsEfx};

std::set<std::string> Together(std::initializer_list<std::set<std::string>> sets) {
    std::set<std::string> all;
    for (const auto& set : sets) {
        all.insert(set.begin(), set.end());
    }
    return all;
}

SysexOptions With(auto change) {
    SysexOptions options;
    options.yamahaDsps = false;
    change(options);
    return options;
}

const SysexOptions kPlain = With([](SysexOptions&) {});

std::vector<GroupCase> Groups() {
    const auto all = [](std::set<std::string> more) {
        return Together({std::move(more), kGsOf10, {kKetron}, kYamahas});
    };
    const auto notGs = Together({{kGm, kGm2, kKetron}, kYamahas});
    const auto ketron = Together({{kGm, kGm2, kBigKetron}, kGsOf10, kYamahas});
    const auto xg = Together({{kGm, kGm2, kKetron}, kGsOf10});
    const auto motif = Together({xg, {kXgReverb, kXgMasterEq, kXgInsert}});
    auto motifKeepsEq = motif;
    motifKeepsEq.erase(kXgMasterEq);
    const auto with = [](std::set<std::string> set, const std::string& more) {
        set.insert(more);
        return set;
    };
    const std::string output = "F0 41 10 00 00 64 12 18 00 22 29 05 18 F7";
    return {
        {"GM", {0, 21, 23, 24, 27, 29, 35, 98, 99, 105}, {kGm}, all({kGm2}), {}, kPlain},
        {"SC", {1, 2, 3, 4, 15, 17, 22, 38, 83}, {kGs}, notGs, {kGsEfx}, kPlain},
        {"ScAfterGm",
         {1, 2, 3, 4, 15, 17, 22, 38, 83},
         {kGm, kGs, "F0 41 10 42 12 40 01 34 5D 2E F7"},
         with(notGs, kGs),
         {kGsEfx},
         With([](SysexOptions& o) { o.gmBeforeGs = true; })},
        {"GsWithoutSearch", {12, 60}, {kGs}, notGs, {}, kPlain},
        {"XG",
         {5, 6, 7, 8, 9, 18, 19, 31, 33, 34, 41, 54, 59, 62, 70, 74, 80, 87, 97, 106, 108},
         {kXg},
         xg,
         {},
         kPlain},
        {"XgBoth",
         {54, 62, 74, 80, 87, 97, 106, 108},
         {kXg},
         xg,
         {kOrgan, kXgInsert},
         SysexOptions()},
        {"XgInserts", {9, 31, 41, 59, 70}, {kXg}, xg, {kXgInsert}, SysexOptions()},
        {"XgNeither", {5, 6, 7, 8, 18, 19, 33, 34}, {kXg}, xg, {}, SysexOptions()},
        {"XgNoMasterEq",
         {54, 62, 74, 80, 87, 97, 106, 108},
         {kXg},
         with(xg, kXgMasterEq),
         {},
         With([](SysexOptions& o) { o.yamahaMasterEq = false; })},
        {"XgNoVocal",
         {62, 74, 80, 87, 97, 106, 108},
         {kXg},
         with(xg, kVocal),
         {},
         With([](SysexOptions& o) { o.yamahaVocalHarmony = false; })},
        {"XgNobodySings",
         {62, 74, 80, 87, 97, 106, 108},
         {kXg},
         with(xg, kVocal),
         {},
         With([](SysexOptions& o) { o.yamahaAutoVocalHarmony = true; })},
        {"XgLacksBoth", {5, 19, 31}, {kXg}, xg, {}, With([](SysexOptions& o) {
             o.yamahaMasterEq = o.yamahaVocalHarmony = false;
         })},
        {"Ketron", {10, 11, 20, 30, 32, 40, 46, 47, 49, 50, 55}, {kKetron}, ketron, {}, kPlain},
        {"SD1000", {73, 76, 79, 84, 92, 101, 104}, {kKetron, kSd1000}, ketron, {}, kPlain},
        {"Genesys", {13, 28}, {}, all({kGm, kGm2}), {}, kPlain},
        {"GM2", {14, 16, 25, 36, 37, 48, 61, 78}, {kGm2}, all({kGm}), {}, kPlain},
        {"KorgPa", {42, 43, 52, 63, 64, 75, 82, 90, 91, 103}, {kGm2}, all({kGm}), {}, kPlain},
        {"KorgPaEq",
         {42, 43, 52, 63, 64, 75, 82, 90, 91, 103},
         {kGm2},
         all({kGm}),
         {kKorgEq},
         With([](SysexOptions& o) { o.korgPartEqualizer = true; })},
        {"MotifES", {26}, {kGm, kMotifEs}, motif, {}, kPlain},
        {"MotifXS", {51}, {kGm, kMotifXs}, motif, {}, kPlain},
        {"MotifXF", {69}, {kMotifXf}, motifKeepsEq, {kMotifOwn}, With([](SysexOptions& o) {
             o.motifDsps = o.motifMasterEq = o.motifWithoutGmReset = true;
         })},
        {"SonicCell", {45, 68}, {kSonic}, all({kGm, kGm2}), {}, kPlain},
        {"KN6000", {53}, {kKn6000}, all({kGm, kGm2}), {}, kPlain},
        {"Limex",
         {44, 56, 57, 58, 65, 66, 77, 81, 85, 86, 88, 89, 93, 94, 95, 96, 107},
         {kGm, kLimexPart},
         all({kGm, kGm2}),
         {},
         kPlain},
        {"MP11", {67}, {kGs00}, all({kGm, kGm2}), {}, kPlain},
        {"MbMusic", {100}, {kGs00}, all({kGm}), {}, kPlain},
        {"Integra7", {71}, {}, notGs, {kIntegraEq}, kPlain},
        {"Integra7Output", {71}, {output}, notGs, {output, kIntegraEq}, With([](SysexOptions& o) {
             o.partOutputs[2] = 5;
         })},
        {"BK9", {72}, {}, notGs, {kBk9Eq}, kPlain},
        {"AsTheyAre", {39, 102}, {}, {}, {}, kPlain},
    };
}

using Note = instruments::SysexNote;

std::vector<std::string> Noted(const SysexSession& session, Note::What what) {
    std::vector<std::string> texts;
    for (const Note& note : session.report.notes) {
        if (note.what == what) {
            texts.push_back(Hex(note.bytes));
        }
    }
    return texts;
}

std::string Plain(std::string hex) {
    std::erase(hex, ' ');
    return hex;
}

template <typename Texts>
std::multiset<std::string> Plain(const Texts& texts) {
    std::multiset<std::string> plain;
    for (const std::string& text : texts) {
        plain.insert(Plain(text));
    }
    return plain;
}

// What the song holds afterwards, without ticks.
std::multiset<std::string> Held(const song::Song& song) {
    std::multiset<std::string> held;
    for (const std::string& text : Messages(song)) {
        held.insert("F0" + text.substr(text.find(' ') + 1));
    }
    return held;
}

std::multiset<std::string> Expected(const GroupCase& group) {
    std::multiset<std::string> expected = Plain(group.inserted);
    for (const Message& message : Everything()) {
        if (group.removed.count(message.hex) == 0) {
            expected.insert(Plain(message.hex));
        }
    }
    return expected;
}

class CheckSysexsOfGroup : public testing::TestWithParam<GroupCase> {};

TEST_P(CheckSysexsOfGroup, PutsTheRightMessagesInAndTakesTheWrongOnesOut) {
    const GroupCase& group = GetParam();
    for (const int id : group.instruments) {
        SCOPED_TRACE(id);
        Prepared song(Sixteen(Everything()), group.options);
        song.Check(id);
        EXPECT_EQ(Held(song.song), Expected(group));
        const auto& report = song.session.report;
        EXPECT_TRUE(report.prepared);
        EXPECT_EQ(report.instrument, id);
        EXPECT_EQ(Plain(Noted(song.session, Note::What::Inserted)), Plain(group.inserted));
        EXPECT_EQ(Plain(Noted(song.session, Note::What::Removed)), Plain(group.removed));
        EXPECT_EQ(Plain(Noted(song.session, Note::What::Found)), Plain(group.found));
        EXPECT_EQ(report.inserted + report.removed + report.found,
                  static_cast<std::int64_t>(report.notes.size()));
    }
}

TEST_P(CheckSysexsOfGroup, ASecondRunAndAReloadChangeNothing) {
    const GroupCase& group = GetParam();
    Prepared song(Sixteen(Everything()), group.options);
    song.Check(group.instruments.front());
    const auto once = song.List(true);
    song.Check(group.instruments.front());
    EXPECT_EQ(song.List(true), once);
    EXPECT_EQ(song.session.report.inserted + song.session.report.removed, 0);
    const Bytes saved = Save(song.song);
    Prepared again(saved, group.options);
    again.Check(group.instruments.front());
    EXPECT_EQ(again.session.report.inserted + again.session.report.removed, 0);
    EXPECT_EQ(Save(again.song), saved);
}

INSTANTIATE_TEST_SUITE_P(Groups, CheckSysexsOfGroup, testing::ValuesIn(Groups()),
                         [](const auto& suite) { return suite.param.name; });

TEST(CheckSysexs, EveryInstrumentIsInAGroupOfTheTests) {
    std::set<int> seen;
    for (const GroupCase& group : Groups()) {
        seen.insert(group.instruments.begin(), group.instruments.end());
    }
    EXPECT_EQ(seen.size(), instruments::kInstrumentCount);
    Prepared song(Sixteen(Everything()));
    EXPECT_TRUE(song.Check(109).session.report.notes.empty());
}

TEST(CheckSysexs, OperationsCarryTheirNamesAndConditions) {
    std::string names;
    for (const auto& step : instruments::OperationsOf(2)) {
        names += std::string(step.operation.name) +
                 (step.when != nullptr ? " (" + std::string(step.when->words.english) + ")" : "") +
                 "\n";
    }
    EXPECT_EQ(names,
              "RemoveGMSysex\nRemoveGM2Sysex\nRemoveKetronSysex\nRemoveYamahaSysex\n"
              "InsertGMSysex (only with GM before GS)\n"
              "RemoveRolandGSSysex (only with GM before GS)\nInsertGSSysex\nInsertGSDelaySysex\n"
              "InsertGSReverbSysex (only with GM before GS)\nSearchRolandSCFXInsertSysex\n");
    EXPECT_EQ(instruments::OperationsOf(5).size() + 4, instruments::OperationsOf(62).size());
    EXPECT_TRUE(instruments::OperationsOf(39).empty());
    EXPECT_TRUE(instruments::OperationsOf(200).empty());
}

TEST(CheckSysexs, SwitchingInstrumentsBringsRemovedMessagesBack) {
    Prepared song(Sixteen({}));
    song.Check(0).Check(19);
    EXPECT_EQ(song.List(true),
              (std::vector<std::string>{"-10@2 7E7F0901F7", "10@2 43104C00007E00F7"}));
    song.Check(0);
    EXPECT_EQ(song.List(true),
              (std::vector<std::string>{"10@2 7E7F0901F7", "-10@2 43104C00007E00F7"}));
    EXPECT_EQ(Noted(song.session, Note::What::Inserted), std::vector<std::string>{"F07E7F0901F7"});
}

TEST(CheckSysexs, EachRunBeginsAtTheUsualTick) {
    Prepared song(Sixteen({}), With([](SysexOptions& o) { o.gmBeforeGs = true; }));
    song.Check(2).Check(10);
    EXPECT_EQ(song.List().front(), "10@2 267B0E0001F7");
}

TEST(CheckSysexs, EventsThatArePutCarryTheirClockTime) {
    // Tempo 400,000 up to tick 40 and 700,000 behind it; the time signature of tick 47 rounds times
    // anew.
    for (const bool timed : {false, true}) {
        Prepared song(Sixteen({}), With([](SysexOptions& o) { o.gmBeforeGs = true; }));
        ASSERT_TRUE(song.result.timesAreSet);
        timed ? song.Timed() : song;
        song.session.index.reset();
        instruments::CheckSysexs(song.song, 2, song.session);
        std::vector<std::int32_t> times;
        for (const auto& place : song.session.index->Places()) {
            times.push_back(place.event->timeMs);
        }
        ASSERT_EQ(times.size(), 19U); // GM, GS, 16 placeholders, reverb
        song.Timed();
        for (std::size_t i = 0; i < times.size(); ++i) {
            EXPECT_EQ(times[i], song.session.index->Places()[i].event->timeMs);
        }
        EXPECT_GT(times.back(), times.front());
    }
}

TEST(CheckSysexs, AnIndexFromTheDecoderDoesTheSame) {
    Prepared walked(Sixteen(Everything()));
    Prepared handed(Sixteen(Everything()));
    std::vector<song::SysexPlace> places;
    for (song::EventLink event = handed.song.tracks[3].first; event; event = event->next) {
        if (event->status == song::kSystemExclusive) {
            places.push_back({event, 3});
        }
    }
    std::reverse(places.begin(), places.end());
    handed.session.index.emplace(places, false);
    EXPECT_EQ(handed.Check(2).List(true), walked.Check(2).List(true));
    EXPECT_EQ(Noted(handed.session, Note::What::Removed),
              Noted(walked.session, Note::What::Removed));
    EXPECT_EQ(Noted(walked.session, Note::What::Removed).size(), 11U);
}

TEST(CheckSysexs, VocalHarmonyStaysWhereSomebodySings) {
    song::Song song;
    RecordingMessageHost host;
    const Bytes file = MidiFileBuilder()
                           .Track(TrackOf(0, {{480, kVocal}}))
                           .Track(TrackBuilder().Text(480, song::kMetaLyric, "la").End(480))
                           .Build();
    song::DecodeMidiData(song, file, {}, host);
    SysexOptions options;
    options.yamahaAutoVocalHarmony = true;
    SysexSession session(options, host);
    instruments::CheckSysexs(song, 74, session);
    EXPECT_EQ(session.report.removed, 0);
    song::ClearSong(song);
}

TEST(CheckSysexs, IgnoredTracksStayAsTheyAre) {
    MidiFileBuilder file;
    file.Track(TrackBuilder().Text(0, 3, "zel_ignore").Sysex(0, FromHex("7E7F0901F7")).End());
    file.Track(TrackOf(0, {{10, kXg}}));
    Prepared song(file.Build(), {}, {.honourZelIgnore = true});
    song.Check(0);
    // Track 10 is missing, track 0 is ignored: the message goes to the first that is not.
    EXPECT_EQ(song.List(true), (std::vector<std::string>{"0@0 7E7F0901F7", "1@2 7E7F0901F7",
                                                         "-1@10 43104C00007E00F7"}));
    EXPECT_EQ(song.Check(0).session.report.inserted, 0);
}

TEST(CheckSysexs, HostileMessagesAreHarmless) {
    MidiFileBuilder file;
    TrackBuilder track;
    track.Note(0, 0, 60, 100);
    for (const char* hex : {"F7", "41", "43", "26", "7E", "7F", "4110", "411042", "4110421240",
                            "41104212401015", "411042124010150000", "43104C", "43104C02",
                            "4373010611", "2600", "7E7F0901", "00", "0000", "41104212401F1501"}) {
        track.Sysex(1, FromHex(hex));
    }
    track.Sysex(1, Bytes(65'536, 0x43)).Sysex(1, Bytes(65'536, 0x41));
    for (int i = 0; i < 30'000; ++i) {
        track.Sysex(0, FromHex("411042124010150119F7"));
        track.Sysex(0, FromHex("41104212400150011EF7"));
    }
    file.Track(track.End());
    for (const int id : {0, 2, 10, 19, 26, 44, 67, 71}) {
        SCOPED_TRACE(id);
        Prepared song(file.Build(), With([](SysexOptions& o) { o.gmBeforeGs = true; }));
        song.Check(id);
        const auto once = song.List(true);
        EXPECT_EQ(song.Check(id).List(true), once);
        EXPECT_LE(song.session.report.notes.size(), instruments::kMostNotes);
    }
}

} // namespace
} // namespace tracksmith::test
