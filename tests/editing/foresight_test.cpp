#include "editing/foresight.h"

#include <string>
#include <utility>
#include <vector>

#include "app/session/session_fixture.h"
#include "editing/chord_names.h"
#include "editing/range_figures.h"
#include "editing/range_tools.h"
#include "editing/seam_picture.h"
#include "song/midi_file_writer.h"

namespace tracksmith::editing {
namespace {

using namespace test;

/// Measures of 2,000 ticks. Channel 1 has a note over the first seam and one over the second, with
/// a voice of its own in between; channel 10 a drum in each measure.
Bytes Seams() {
    TrackBuilder drums;
    for (int i = 0; i < 8; ++i) {
        drums.Note(i == 0 ? 0 : 1'900, 9, 36, 90).NoteOff(100, 9, 36);
    }
    return MidiFileBuilder(1, 500)
        .Track(TrackBuilder().Tempo(0, 500'000).End())
        .Track(TrackBuilder()
                   .Program(0, 0, 5)
                   .Note(3'000, 0, 60, 90)
                   .NoteOff(2'000, 0, 60) // 5,000
                   .Program(500, 0, 7)
                   .Note(1'500, 0, 100, 90) // 7,000
                   .NoteOff(2'000, 0, 100)
                   .Note(1'000, 0, 127, 90) // 10,000
                   .NoteOff(500, 0, 127)
                   .End())
        .Track(drums.End())
        .Build();
}

class ForesightTest : public SessionFixture {
protected:
    ForesightTest() { Open(Seams()); }
    Bytes Coded(const song::Song& song) { return song::EncodeFormat1(song, {}, host); }
    static RangeWish Wish(RangeTool tool, const char* destination = "") {
        return {tool, SplitPosition("3"), SplitPosition("5"), SplitPosition(destination)};
    }
    // The notes of a channel as "start-end", with < for ended there and > for begun again.
    static std::string Notes(const SeamPicture& picture, std::uint8_t channel) {
        std::string text;
        for (const SeamNote& note : picture.notes) {
            if (note.channel == channel) {
                text += (note.begunAgain ? ">" : "") + std::to_string(note.start) + "-" +
                        std::to_string(note.end) + (note.ended ? "<" : "") + " ";
            }
        }
        return text;
    }

    Undo undo{session};
    RangeTools tools{session, undo, host};
};

TEST_F(ForesightTest, ShowsExactlyWhatTheToolsMake) {
    const Bytes before = Coded(session.Song());
    const Transposing transposing{"2", {}, "", {}, {}};
    const auto expectSame = [&](const Foresight& foresight, const auto& run) {
        ASSERT_TRUE(foresight.after) << foresight.reading.fault;
        EXPECT_EQ(song::CheckSong(*foresight.after), "");
        EXPECT_EQ(Coded(session.Song()), before);
        const Bytes expected = Coded(*foresight.after);
        const std::int32_t lengthMs = foresight.after->lengthMs;
        run();
        EXPECT_EQ(Coded(session.Song()), expected);
        EXPECT_EQ(session.Song().lengthMs, lengthMs);
        host.answer = true;
        EXPECT_TRUE(undo.MME_UndoClick(host));
        EXPECT_EQ(Coded(session.Song()), before);
    };
    const RangeWish cut = Wish(RangeTool::Delete);
    expectSame(ForeseeDelete(session.Song(), cut, Language::English), [&] { tools.Delete(cut); });
    for (const bool state : {true, false}) {
        const RangeWish copy = Wish(RangeTool::Copy, "7");
        expectSame(ForeseeCopy(session.Song(), copy, state, Language::English),
                   [&] { tools.Copy(copy, state); });
    }
    const RangeWish move = Wish(RangeTool::Transpose);
    expectSame(ForeseeTranspose(session.Song(), move, transposing, Language::English),
               [&] { tools.Transpose(move, transposing); });
    EXPECT_FALSE(ForeseeDelete(session.Song(), {}, Language::English).after);
}

TEST_F(ForesightTest, CountsWhatMovesAndFolds) {
    const Foresight up =
        ForeseeTranspose(session.Song(), {RangeTool::Transpose, {"1", "1"}, {"6", "2"}, {}},
                         {"40", {}, "", {}, {}}, Language::English);
    const ChannelMove& melody = up.moves[0];
    EXPECT_EQ(melody.notes, 3);
    EXPECT_EQ(melody.moved, 3);
    EXPECT_EQ(melody.folded, 2);
    EXPECT_EQ(melody.lowest, 60);
    EXPECT_EQ(melody.highest, 127);
    EXPECT_EQ(melody.lowestAfter, 100);
    EXPECT_EQ(melody.highestAfter, 119);
    EXPECT_EQ(up.moves[9].notes, 6);
    EXPECT_EQ(up.moves[9].moved, 0);
}

TEST_F(ForesightTest, NamesTheChordsOfTheRange) {
    using Names = std::vector<std::string>;
    TrackBuilder words;
    words.Text(0, 5, "[C]before ").Text(4'000, 5, "-Hm-in ").Text(500, 5, "[Hm]this ");
    words.Text(0, 5, "[F]removed")
        .Text(500, 5, "[note] ")
        .Text(2'999, 5, "[B/D]range")
        .Text(1, 5, "[C]behind")
        .End();
    Open(MidiFileBuilder(1, 500)
             .Track(TrackBuilder()
                        .Meta(4'700, 0x7F, {0x43, 0x7B, 0x01, 0x31, 0x00, 0x35, 0x00})
                        .Meta(1'000, 0x7F, {0x43, 0x7B, 0x01, 0x7F, 0x7F, 0x7F, 0x7F}) // none
                        .End())
             .Track(words)
             .Track(TrackBuilder().Note(4'000, 0, 60, 90).NoteOff(9'000, 0, 60).End())
             .Build());
    EditSession(session, [](session::Workspace& work) {
        for (song::EventLink event = work.song.tracks[1].first; event; event = event->next) {
            event->length = event->data.Text() == "[F]removed" ? 0 : event->length;
        }
    });
    EXPECT_EQ(FindChordEvents(session.Song()).count, 2U);
    EXPECT_EQ(FindChordEvents(session.Song()).track, 0U);
    const Foresight up = ForeseeTranspose(session.Song(), Wish(RangeTool::Transpose),
                                          {"2", {}, "", {}, {}}, Language::English);
    EXPECT_EQ(up.chords, (Names{"Hm", "C/G", "B/D"})); // the German names of the song
    EXPECT_EQ(up.chordsAfter, (Names{"C#m", "D/A", "C/E"}));
}

TEST_F(ForesightTest, RemovedNotesAreNotThere) {
    EditSession(session, [](session::Workspace& work) {
        work.song.tracks[2].first->next->length = 0;            // the first drum
        work.song.tracks[1].last->prev->prev->prev->length = 0; // the end of the second last note
    });
    EXPECT_EQ(FirstNoteTick(session.Song()), 2'000);
    EXPECT_EQ(CountRange(session.Song(), {0, 4'000, 0}).notes, 2); // a drum and the long note
    const Foresight copy =
        ForeseeCopy(session.Song(), Wish(RangeTool::Copy, "6"), true, Language::English);
    const SeamPicture end =
        PictureSeam(session.Song(), *copy.after, RangeTool::Copy, copy.reading.range, true);
    EXPECT_EQ(Notes(end, 0), "13000-13999 14000-14500 ");
}

// Each in its own metre, and nothing outside the song.
TEST_F(ForesightTest, AMeasureOnEitherSideOfASeamIsShown) {
    DecodedSong decoded(
        MidiFileBuilder(1, 500)
            .Track(TrackBuilder().TimeSignature(2'000, 3, 2).TimeSignature(1'500, 5, 2).End())
            .Track(TrackBuilder().Note(8'000, 0, 60, 90).End())
            .Build());
    const song::TimeMap& map = decoded.Timed().song;
    const auto span = [&](std::int32_t seam) {
        const SeamSpan shown = SpanAround(map, seam);
        return std::pair(shown.from, shown.to);
    };
    EXPECT_EQ(span(3'500), std::pair(2'000, 6'000));
    EXPECT_EQ(span(2'000), std::pair(0, 3'500));
    EXPECT_EQ(span(0), std::pair(0, 2'000));
    EXPECT_EQ(span(6'000), std::pair(3'500, 8'010));
}

TEST_F(ForesightTest, PicturesTheNotesAroundEachSeam) {
    const auto picture = [&](const Foresight& foresight, RangeTool tool, bool atEnd) {
        return PictureSeam(session.Song(), *foresight.after, tool, foresight.reading.range, atEnd);
    };
    const Foresight cut = ForeseeDelete(session.Song(), Wish(RangeTool::Delete), Language::English);
    const SeamPicture seam = picture(cut, RangeTool::Delete, false);
    EXPECT_EQ(cut.seams.closed, 1);
    EXPECT_EQ(cut.seams.begunAgain, 1);
    EXPECT_EQ(seam.seam, 4'000);
    EXPECT_EQ(seam.from, 2'000);
    EXPECT_EQ(seam.to, 6'000);
    EXPECT_EQ(Notes(seam, 0), "3000-3999< >4000-5000 ");
    EXPECT_EQ(Notes(seam, 9), "2000-2100 4000-4100 ");

    const Foresight copy =
        ForeseeCopy(session.Song(), Wish(RangeTool::Copy, "6"), true, Language::English);
    const SeamPicture start = picture(copy, RangeTool::Copy, false);
    EXPECT_EQ(start.seam, 10'000);
    EXPECT_EQ(Notes(start, 0), "7000-9000 >10000-11000 ");
    const SeamPicture end = picture(copy, RangeTool::Copy, true);
    EXPECT_EQ(end.seam, 14'000);
    EXPECT_EQ(Notes(end, 0), "13000-13999< 14000-14500 ");
}

} // namespace
} // namespace tracksmith::editing
