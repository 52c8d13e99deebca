#include "app/song_description.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "app/load_sequence.h"

namespace tracksmith::app {
namespace {

using namespace test;

SongDescription Describe(const Bytes& file, const char* name = "folder/file.mid") {
    session::Session session;
    session.Options().decodeOptions.honourZelIgnore = true;
    RecordingMessageHost host;
    OpenMidiData(session, file, name, host);
    return DescribeSong(session.Work());
}

TEST(SongDescription, NamesWhatTheSongHolds) {
    const SongDescription song = Describe(MidiFileBuilder()
                                              .Track(TrackBuilder()
                                                         .Text(0, 3, "Gr\xF6\xDF\x65\n")
                                                         .Tempo(960, 400'000)
                                                         .Short(0, 0xB3, 0, 7) // too late
                                                         .TimeSignature(0, 6, 3)
                                                         .Meta(0, 0x59, {1, 0})
                                                         .Text(0, 5, "la")
                                                         .Sysex(0, {0x7E, 0xF7})
                                                         .End())
                                              .Track(TrackBuilder()
                                                         .Text(0, 3, "zel_ignore")
                                                         .Short(0, 0xB3, 32, 9)
                                                         .Program(0, 3, 10)
                                                         .Short(0, 0xB3, 0, 1)
                                                         .Program(0, 3, 11)
                                                         .Note(5, 3, 60, 1)
                                                         .Note(5, 3, 60, 0)
                                                         .Note(3830, 9, 60, 1)
                                                         .End())
                                              .Build());
    EXPECT_EQ(song.title, "Größe ");
    EXPECT_EQ(song.notes, 2);
    EXPECT_EQ(song.lyrics, 1);
    EXPECT_EQ(song.sysex, 1);
    EXPECT_EQ(song.keySignatures, 1);
    EXPECT_EQ(song.events, 9 + 10);
    EXPECT_EQ(song.songLength, 3850);
    EXPECT_EQ(song.lengthPosition, "003.03.010");
    EXPECT_EQ(song.lengthText, "303010");
    ASSERT_EQ(song.tracks.size(), 2U);
    EXPECT_FALSE(song.tracks[0].ignored);
    EXPECT_TRUE(song.tracks[1].ignored);
    EXPECT_EQ(song.tracks[1].channel, 3);
    EXPECT_EQ(song.tracks[1].notes, 2);
    ASSERT_EQ(song.channels.size(), 2U);
    EXPECT_EQ(song.channels[0].channel, 3);
    EXPECT_EQ(song.channels[0].bankMsb, std::nullopt);
    EXPECT_EQ(song.channels[0].bankLsb, 9);
    EXPECT_EQ(song.channels[0].program, 10);
    EXPECT_EQ(song.channels[0].notes, 1);
    EXPECT_EQ(song.channels[1].channel, 9);
    EXPECT_EQ(song.channels[1].program, std::nullopt);
    EXPECT_EQ(song.changes[song::LoadChange::NoteOnVelocityZero], 1);
}

TEST(SongDescription, ListsTheTimeMapWithoutItsSpareEntries) {
    const SongDescription song = Describe(
        MidiFileBuilder()
            .Track(TrackBuilder().Tempo(960, 400'000).TimeSignature(960, 3, 2).Tempo(5000, 1).End())
            .Track(TrackBuilder().Note(3840, 0, 60, 1).End())
            .Build());
    ASSERT_EQ(song.tempos.size(), 2U);
    EXPECT_EQ(song.tempos[0].tick, 0);
    EXPECT_EQ(song.tempos[0].bpm, 120);
    EXPECT_EQ(song.tempos[1].position, "001.03.000");
    EXPECT_EQ(song.tempos[1].timeMs, 1000);
    EXPECT_EQ(song.tempos[1].bpm, 150);
    ASSERT_EQ(song.timeSignatures.size(), 2U);
    EXPECT_EQ(song.timeSignatures[1].position, "002.01.000");
    EXPECT_EQ(song.timeSignatures[1].timeMs, 1800);
    EXPECT_EQ(song.timeSignatures[1].numerator, 3);
}

TEST(SongDescription, ASongWithoutNamesIsCalledLikeItsFile) {
    const Bytes unnamed =
        MidiFileBuilder().Track(TrackBuilder().Text(0, 3, "  ").Note(0, 0, 60, 1).End()).Build();
    EXPECT_EQ(Describe(unnamed).title, "file");
    const SongDescription none = DescribeSong(session::Workspace{});
    EXPECT_EQ(none.title, "");
    EXPECT_EQ(none.events, 0);
    EXPECT_TRUE(none.tracks.empty());
}

} // namespace
} // namespace tracksmith::app
