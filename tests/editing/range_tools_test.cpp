#include "editing/range_tools.h"

#include "app/session/session_fixture.h"
#include "editing/chord_names.h"
#include "editing/range_figures.h"

namespace tracksmith::editing {
namespace {

using namespace test;

TEST(TransposeTest, PitchesAndChordsMove) {
    struct Pitch {
        int pitch, semitones;
        bool mega;
        int expected;
    };
    for (const Pitch& each : {Pitch{125, 5, false, 118},
                              {2, -5, false, 9},
                              {60, 12, false, 72},
                              {100, 60, false, 124},
                              {3, -40, false, 11},
                              {96, 2, true, 96},
                              {95, 2, true, 97},
                              {30, -5, true, 37},
                              {32, -4, true, 28},
                              {30, -20, true, 34}}) {
        EXPECT_EQ(TransposedPitch(static_cast<std::uint8_t>(each.pitch), each.semitones, each.mega),
                  each.expected)
            << each.pitch << " by " << each.semitones;
    }
    struct Root {
        int root, semitones, expected;
    };
    for (const Root& each : {Root{0x31, 1, 0x41},
                             {0x22, 1, 0x32},
                             {0x27, -1, 0x36},
                             {0x27, 1, 0x37},
                             {0x41, -1, 0x31},
                             {0x7F, 3, 0x7F},
                             {0x30, 3, 0x30}}) {
        EXPECT_EQ(MovedRoot(static_cast<std::uint8_t>(each.root), each.semitones), each.expected)
            << each.root;
    }
    struct Lyric {
        const char* text;
        int semitones;
        bool german;
        const char* expected;
    };
    for (const Lyric& each : {Lyric{"-Am7-lo", 2, false, "-Bm7-lo"},
                              {"[C]la[F#/A#]le", 1, false, "[C#]la[G/B]le"},
                              {"[Bbmaj7]", 1, false, "[Bmaj7]"},
                              {"[B]", 2, true, "[C]"},
                              {"[Hm]", -1, true, "[A#m]"},
                              {"la-la-la [note] -", 3, false, "la-la-la [note] -"}}) {
        EXPECT_EQ(MovedLyric(each.text, each.semitones, each.german), each.expected);
    }
    for (const auto& [entry, selected, taken] :
         {std::array<std::size_t, 3>{8, 8, 8}, {9, 10, 9}, {10, 11, 11}, {14, 15, 15}}) {
        EXPECT_EQ(ChannelOfSelection(entry), selected);
        EXPECT_EQ(ChannelOfEntry(entry), taken);
    }
    EXPECT_EQ(ChannelLabel("09 - Strings"), "9");
}

/// One tick per millisecond at 120; measures of 2,000 ticks, notes at 0, 1,000 and so on up to
/// 9,000 on channel 1, drums on 10.
Bytes LongSong() {
    TrackBuilder notes;
    TrackBuilder others;
    for (int i = 0; i < 10; ++i) {
        notes.Note(i == 0 ? 0 : 900, 0, 60 + i, 90).NoteOff(100, 0, 60 + i);
        others.Note(i == 0 ? 10 : 950, 9, 36, 90).NoteOff(50, 9, 36);
    }
    others.Sysex(0, {0x41, 0x10, 0x42, 0x12, 0x40, 0x1B, 0x15, 0x01, 0x0F, 0xF7})
        .Sysex(0, {0x7E, 0x7F, 9, 1, 0xF7});
    return MidiFileBuilder(1, 500)
        .Track(TrackBuilder()
                   .Tempo(0, 500'000)
                   .Meta(4'000, 0x7F, {0x43, 0x7B, 1, 0x31, 0, 0x7F, 0x7F})
                   .Text(0, 5, "-C-")
                   .End())
        .Track(notes.End())
        .Track(others.End())
        .Build();
}

class RangeToolsTest : public SessionFixture {
protected:
    RangeToolsTest() { Open(LongSong()); }

    // What is said about the positions, and that nothing has changed.
    std::string Refused(const RangeWish& wish) {
        const Bytes before = Saved();
        host.messages.clear();
        const auto run = [&] {
            switch (wish.tool) {
                case RangeTool::Delete:
                    tools.Delete(wish);
                    break;
                case RangeTool::Copy:
                    tools.Copy(wish);
                    break;
                case RangeTool::Transpose:
                    tools.Transpose(wish, {"1", {}, "", {}, {}});
            }
        };
        EXPECT_THROW(run(), EMidiError);
        EXPECT_EQ(Saved(), before);
        EXPECT_FALSE(undo.Enabled());
        return host.messages.empty() ? "" : host.messages.front();
    }
    RangeWish Wish(const char* from, const char* to, const char* destination = "1") {
        return {RangeTool::Delete, SplitPosition(from), SplitPosition(to),
                SplitPosition(destination)};
    }
    void ExpectUndone(const Bytes& before) {
        host.answer = true;
        EXPECT_TRUE(undo.MME_UndoClick(host));
        EXPECT_EQ(Saved(), before);
        EXPECT_EQ(song::CheckSong(session.Song()), "");
    }

    Undo undo{session};
    RangeTools tools{session, undo, host};
};

TEST_F(RangeToolsTest, BadPositionsAreRefused) {
    struct Case {
        RangeTool tool;
        const char *from, *to, *destination, *expected;
    };
    constexpr auto kDelete = RangeTool::Delete;
    constexpr auto kCopy = RangeTool::Copy;
    for (const Case& each :
         {Case{kDelete, "01:01", "2", "", "The \"From\" position is too low!"},
          {kCopy, "1:1", "2", "4", "The \"From\" position is too low!"},
          {kDelete, "", "2", "",
           "Please enter measure and beat into the \"From\" field, e.g. \"8:04\", \"16:01\"."},
          {kDelete, "2:x", "3", "",
           "Please enter measure and beat into the \"From\" field, e.g. \"8:04\", \"16:01\"."},
          {kDelete, "2", "3:", "",
           "Please enter measure and beat into the \"End\" field, e.g. \"8:04\", \"16:01\"."},
          {kCopy, "2", "-3", "4", "Please enter measure and beat into the \"End\" field."},
          {kCopy, "2", "3", "", "Please enter measure and beat into the \"To\" field."},
          {kDelete, "0:1", "3", "", "Error calculating the \"from\" position"},
          {kDelete, "2", "3:0", "", "Error calculating the \"to\" position"},
          {kCopy, "2", "3", "0:1", "Error calculating the \"to\" position"},
          {kDelete, "99999999", "3", "",
           "\"Start-Position\" must be smaller than \"End of song = 005.03.110\"!"},
          {kDelete, "2", "2147483647:99", "",
           "\"End-Position\" must be smaller than \"End of song = 005.03.110\"!"},
          {kDelete, "2", "99999999999", "",
           "Please enter measure and beat into the \"End\" field, e.g. \"8:04\", \"16:01\"."},
          {kCopy, "2", "3", "6:02",
           "\"To-Position\" must be smaller than \"End of song = 005.03.110\"!"},
          {kDelete, "3", "2:04", "", "\"Start-Position\" must be smaller than \"End-Position\"!"},
          {RangeTool::Transpose, "2", "2:1", "",
           "\"Start-Position\" must be smaller than \"End-Position\"!"}}) {
        SCOPED_TRACE(std::string(each.from) + " " + each.to + " " + each.destination);
        RangeWish wish = Wish(each.from, each.to, each.destination);
        wish.tool = each.tool;
        if (std::string_view(each.destination).empty()) {
            wish.destination = {};
        }
        std::string said = Refused(wish);
        EXPECT_EQ(said, each.expected);
    }
    EXPECT_THROW(tools.Transpose(Wish("2", "3"), {"", {}, "", {}, {}}), EMidiError);
    EXPECT_EQ(host.messages.back(), "Please enter the semitones value");
    EXPECT_THROW(tools.Transpose(Wish("2", "3"), {"2", 4, "", {}, {}}), EMidiError);
    EXPECT_EQ(host.messages.back(), "The MIDI channel 5 can't be transposed.");
}

TEST_F(RangeToolsTest, ChangesCanBeUndone) {
    const Bytes before = Saved();
    const RangeFigures figures = CountRange(session.Song(), {2'000, 9'900, 0});
    EXPECT_EQ(figures.notes, 16);
    EXPECT_EQ(figures.measures, 4);
    EXPECT_EQ(CountRange(session.Song(), {0, 2'000, 0}).lengthMs + figures.lengthMs,
              CountRange(session.Song(), {0, 9'900, 0}).lengthMs);
    EXPECT_EQ(CountRange(session.Song(), {2'500, 8'000, 0}).measures, 3);
    EXPECT_EQ(CountRange(session.Song(), {2'500, 8'001, 0}).measures, 4);
    const RangeFigures messages = CountRange(session.Song(), {9'000, 9'100, 0});
    EXPECT_EQ(messages.drumMessages, 1);
    EXPECT_EQ(messages.instrumentMessages, 1);
    tools.Delete(Wish("2", "4"));
    EXPECT_EQ(undo.Caption(Language::English), "Undo - delete range");
    EXPECT_EQ(session.Song().songLength, 5'110);
    ExpectUndone(before);
    tools.Copy(Wish("2", "4", "5"));
    EXPECT_EQ(undo.Caption(Language::English), "Undo - copy range");
    EXPECT_EQ(session.Song().songLength, 13'110);
    ExpectUndone(before);
    EXPECT_EQ(tools.Transpose(Wish("3", "4"), {"+3", {}, "", {}, {}}), 2);
    EXPECT_EQ(Listing(session.Song().tracks[0]),
              "0 FF51 07A120; 4000 FF7F 437B0142007F7F; 4000 FF05 2D44232D");
    EXPECT_NE(
        Listing(session.Song().tracks[1])
            .find("3100 803F40; 4000 90435A; 4100 804340; 5000 90445A; 5100 804440; 6000 9042"),
        std::string::npos);
    EXPECT_EQ(undo.Caption(Language::English), "Undo - transpose range");
    ExpectUndone(before);
}

TEST_F(RangeToolsTest, TransposingMovesNoteOffsBehindTheRangeAndKeepsTheLiveOffset) {
    Open(MidiFileBuilder(1, 500)
             .Track(TrackBuilder()
                        .Note(1'900, 2, 60, 90)
                        .Note(200, 2, 60, 91)
                        .Short(0, 0xA2, 60, 5)
                        .Note(0, 0, 64, 90)
                        .Short(0, 0xB0, 64, 127)
                        .NoteOff(0, 0, 64)
                        .NoteOff(100, 2, 60)
                        .NoteOff(2'000, 2, 60)
                        .Note(5'000, 2, 60, 92)
                        .NoteOff(100, 2, 60)
                        .End())
             .Build());
    mixer::Transposition live;
    live.channels[2] = 2;
    EditSession(session, [&](session::Workspace& work) { mixer::WritePitches(work.song, live); });
    host.answer = false;
    EXPECT_EQ(tools.Transpose(Wish("2", "3"), {"-4", 2, "", live, {}}), 1);
    EXPECT_EQ(tools.Transpose(Wish("2", "3"), {"2", 0, "", live, {}}), 1); // but not its pedal
    EXPECT_EQ(Listing(session.Song().tracks[0]),
              "1900 923E5A; 2100 923A5B; 2100 A23E05; 2100 90425A; 2100 B0407F; 2100 804240; "
              "2200 823E40; 4200 823A40; 9200 923E5C; 9300 823E40");
    EXPECT_TRUE(host.questions.empty());
}

TEST_F(RangeToolsTest, EffectNotesOfMegaVoicesStayWhileOneIsPlayed) {
    TrackBuilder track;
    for (const int program : {7, 8}) { // the first is a MegaVoice
        track.Program(program == 7 ? 2'000 : 100, 5, program);
        for (const int key : {60, 100}) {
            track.Note(100, 5, key, 90).NoteOff(100, 5, key);
        }
    }
    Open(
        MidiFileBuilder(1, 500).Track(track.Note(9'000, 0, 60, 9).NoteOff(9, 0, 60).End()).Build());
    host.answer = false;
    const auto isMega = [](const instruments::VoiceNumbers& voice) { return voice.program == 7; };
    EXPECT_EQ(tools.Transpose(Wish("2", "4"), {"2", {}, "", {}, isMega}), 3);
    std::vector<int> keys;
    for (song::ConstEventLink event = session.Song().tracks[0].first; event; event = event->next) {
        if (event->IsNoteOn()) {
            keys.push_back(event->data1);
        }
    }
    EXPECT_EQ(keys, (std::vector<int>{62, 100, 62, 102, 60}));
}

TEST_F(RangeToolsTest, NotesOfOnePitchThatAreOpenAtASeamDoNotOverlap) {
    Open(MidiFileBuilder(1, 500)
             .Track(TrackBuilder()
                        .Note(1'000, 0, 60, 90)
                        .Note(500, 0, 60, 91)
                        .NoteOff(5'500, 0, 60)
                        .NoteOff(500, 0, 60)
                        .End())
             .Build());
    host.answer = false;
    tools.Delete(Wish("3", "4"));
    EXPECT_EQ(Listing(session.Song().tracks[0]),
              "1000 903C5A; 1500 803C5A; 1500 903C5B; 3999 803C5B; "
              "4000 903C5A; 4000 903C5B; 5000 803C40; 5500 803C40");
}

TEST_F(RangeToolsTest, FaultsAreAskedAboutUntilSilenced) {
    TrackBuilder track;
    for (int i = 0; i < 4; ++i) {
        track.Note(500, 0, 60, 90);
    }
    track.NoteOff(10, 0, 61).NoteOff(3'000, 0, 60);
    Open(MidiFileBuilder(1, 500).Track(track.End()).Build());
    host.answer = true;
    tools.Delete(Wish("2", "3"));
    ASSERT_EQ(host.questions.size(), 4U);
    EXPECT_EQ(host.questions.front(),
              "Double NoteOn found ...\nChannel 1, note C3, 001.03.000\n"
              "Continue to show this error message?");
    EXPECT_TRUE(host.questions.back().starts_with("Double NoteOff found ..."));
    host.questions.clear();
    host.answer = false;
    tools.Copy(Wish("1:04", "2:02", "2:03"));
    EXPECT_EQ(host.questions.size(), 1U);
}

} // namespace
} // namespace tracksmith::editing
