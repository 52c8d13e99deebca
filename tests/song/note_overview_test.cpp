#include "song/note_overview.h"

#include <gtest/gtest.h>
#include <numeric>

#include "support/song_assert.h"

namespace tracksmith::song {
namespace {

using namespace test;

TEST(NoteOverview, CountsNotesByChannelAndMeasure) {
    DecodedSong decoded(
        MidiFileBuilder()
            .Track(TrackBuilder().TimeSignature(0, 4, 2).TimeSignature(1920, 3, 2).End())
            .Track(TrackBuilder()
                       .Note(0, 0, 60, 1)
                       .Note(1919, 0, 60, 1)
                       .Note(0, 0, 60, 0)
                       .Note(1, 0, 62, 1)
                       .Note(1440, 15, 62, 1)
                       .End())
            .Track(TrackBuilder().Note(0, 3, 60, 1).End())
            .Build());
    decoded.Timed().song.tracks[2].ignored = 1;
    const NoteOverview overview = MakeNoteOverview(decoded.song);
    EXPECT_EQ(overview.measures, 3);
    EXPECT_EQ(overview.measuresPerColumn, 1);
    EXPECT_EQ(overview.columnTick, (std::vector<std::int32_t>{0, 1920, 3360, 3370}));
    EXPECT_EQ(overview.notes[0], (std::vector<std::uint32_t>{2, 1, 0}));
    EXPECT_EQ(overview.notes[15], (std::vector<std::uint32_t>{0, 0, 1}));
    EXPECT_EQ(overview.total[0], 3U);
    EXPECT_EQ(overview.total[3], 0U);
}

// A new time signature begins a measure, a new tempo does not.
TEST(NoteOverview, ColumnsAreTheMeasuresAsTheyAreHeard) {
    DecodedSong decoded(MidiFileBuilder()
                            .Track(TrackBuilder()
                                       .TimeSignature(0, 4, 2)
                                       .Tempo(500, 400'000)
                                       .TimeSignature(460, 3, 2)
                                       .TimeSignature(1440, 3, 3)
                                       .Tempo(720, 300'000)
                                       .End())
                            .Track(TrackBuilder().Note(4'000, 0, 60, 1).End())
                            .Build());
    const NoteOverview overview = MakeNoteOverview(decoded.Timed().song);
    EXPECT_EQ(overview.columnTick, (std::vector<std::int32_t>{0, 960, 2400, 3120, 3840, 4010}));
    EXPECT_EQ(MakeNoteOverview(Song()).columnTick.size(), 2U); // one column without a song
}

TEST(NoteOverview, LongSongsAreHeldToTheMostColumnsAndLoseNoNote) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        DecodedSong decoded(seed == 0 ? MidiFileBuilder(1, 1)
                                            .Track(TrackBuilder()
                                                       .TimeSignature(0, 1, 3)
                                                       .Note(7, 4, 60, 1)
                                                       .Note(2'000'000'000, 4, 60, 1)
                                                       .End())
                                            .Build()
                                      : RandomFile(seed, 1, true));
        const NoteOverview overview = MakeNoteOverview(decoded.Timed().song);
        ASSERT_LE(overview.Columns(), NoteOverview::kMostColumns);
        ASSERT_EQ(overview.columnTick.size(), overview.Columns() + 1);
        EXPECT_GE(overview.columnTick.back(), decoded.song.songLength);
        EXPECT_TRUE(std::is_sorted(overview.columnTick.begin(), overview.columnTick.end()));
        for (std::size_t channel = 0; channel < 16; ++channel) {
            const auto& row = overview.notes[channel];
            EXPECT_EQ(std::accumulate(row.begin(), row.end(), std::uint64_t{0}),
                      overview.total[channel]);
        }
    }
}

} // namespace
} // namespace tracksmith::song
