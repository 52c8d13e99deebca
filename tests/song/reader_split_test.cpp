#include <gtest/gtest.h>

#include "support/song_assert.h"

namespace tracksmith::song {
namespace {

using namespace test;

DecodeOptions Split() {
    DecodeOptions options;
    options.splitFormat0 = true;
    return options;
}

TEST(ReaderSplit, EveryKindOfEventGoesToItsTrack) {
    const DecodedSong decoded(MidiFileBuilder(0)
                                  .Track(TrackBuilder()
                                             .Tempo(0, 400'000)
                                             .Text(0, 3, "Song")
                                             .Sysex(1, {0x7E, 0xF7})
                                             .Note(1, 0, 60, 1)
                                             .Note(0, 15, 61, 1)
                                             .Raw(5, {61, 0})
                                             .Text(1, 3, "later")
                                             .Meta(0, 0x59, {1, 0})
                                             .End())
                                  .Build(),
                              Split());
    EXPECT_EQ(decoded.song.format, 1);
    EXPECT_EQ(decoded.song.fileFormat, 0);
    ASSERT_EQ(decoded.song.trackCount, 17);
    EXPECT_EQ(decoded.List(0), "");
    EXPECT_EQ(decoded.List(1),
              "0 FF51 061A80; 0 FF03 536F6E67; 2 903C01; 8 FF03 6C61746572; "
              "8 FF59 0100");
    EXPECT_EQ(decoded.List(10), "1 F0 7EF7");
    EXPECT_EQ(decoded.List(16), "2 9F3D01; 7 8F3D11");
    EXPECT_EQ(decoded.song.tracks[5].eventCount, 2);
    EXPECT_EQ(decoded.song.tracks[16].channel, 15);
    EXPECT_EQ(decoded.song.tempos[0].tempo, 400'000);
    EXPECT_EQ(decoded.song.keySignatures.size(), 17U);
    EXPECT_EQ(decoded.result.report[LoadChange::SplitIntoChannels], 1);
    std::size_t keys = 0;
    for (const auto& list : decoded.song.keySignatures) {
        keys += list.size();
    }
    EXPECT_EQ(keys, 1U);
}

TEST(ReaderSplit, SeveralChunksAreMergedStablyByTick) {
    const DecodedSong decoded(
        MidiFileBuilder(0)
            .Track(TrackBuilder().Note(0, 0, 60, 1).Note(10, 0, 61, 1).Note(10, 0, 62, 1).End())
            .Track(TrackBuilder().Note(10, 0, 70, 1).Text(0, 1, "b").Note(5, 0, 71, 1).End())
            .Track(TrackBuilder().Note(10, 0, 80, 1).Sysex(0, {0xF7}).Note(0, 9, 35, 1).End())
            .Build(),
        Split());
    EXPECT_EQ(decoded.song.trackCount, 17);
    EXPECT_EQ(decoded.List(1),
              "0 903C01; 10 903D01; 10 904601; 10 FF01 62; 10 905001; 15 904701; "
              "20 903E01");
    EXPECT_EQ(decoded.List(10), "10 F0 F7; 10 992301");
}

TEST(ReaderSplit, ManyEventsOfOneTickKeepTheirOrder) {
    MidiFileBuilder file(0);
    std::string expected;
    for (int chunk = 0; chunk < 3; ++chunk) {
        TrackBuilder track;
        for (int key = chunk; key < 120; key += 3) {
            track.Note(key == chunk ? 10 : 0, 0, key, 1);
            const std::uint8_t bytes[] = {0x90, static_cast<std::uint8_t>(key), 1};
            expected += (expected.empty() ? "10 " : "; 10 ") + Hex(bytes);
        }
        file.Track(track.End());
    }
    EXPECT_EQ(DecodedSong(file.Build(), Split()).List(1), expected);
}

struct FormatRow {
    int fileFormat;
    int chunks;
    bool split;
    int format;
    int keptFormat;
    int tracks;
    bool changed;
};

class FormatTest : public testing::TestWithParam<FormatRow> {};

TEST_P(FormatTest, FollowsFromHeaderAndOption) {
    const FormatRow& row = GetParam();
    MidiFileBuilder file(row.fileFormat, 0x7FFF);
    for (int i = 0; i < row.chunks; ++i) {
        file.Track(TrackBuilder().Note(0, i, 60, 1).End());
    }
    DecodeOptions options;
    options.splitFormat0 = row.split;
    const DecodedSong decoded(file.Build(), options);
    EXPECT_EQ(decoded.song.format, row.format);
    EXPECT_EQ(decoded.song.fileFormat, row.keptFormat);
    EXPECT_EQ(decoded.song.trackCount, row.tracks);
    EXPECT_EQ(decoded.song.division, 0x7FFF);
    EXPECT_EQ(decoded.song.divisionFifth, 0x7FFF / 5);
    EXPECT_EQ(decoded.result.report[LoadChange::FormatChanged], row.changed ? 1 : 0);
}

// The first format byte of the header is ignored.
INSTANTIATE_TEST_SUITE_P(
    Headers, FormatTest,
    testing::Values(FormatRow{0, 1, false, 0, 0, 1, false}, FormatRow{0, 1, true, 1, 0, 17, false},
                    FormatRow{1, 1, false, 0, 0, 1, true}, FormatRow{1, 1, true, 1, 0, 17, true},
                    FormatRow{0x100, 1, false, 0, 0, 1, false},
                    FormatRow{1, 3, true, 1, 1, 3, false}, FormatRow{0, 2, true, 1, 0, 17, false},
                    FormatRow{2, 2, false, 1, 2, 2, false}));

TEST(ReaderSplit, RandomFilesHoldTheInvariants) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        const DecodedSong whole(RandomFile(seed, 0));
        const DecodedSong split(RandomFile(seed, 0), Split());
        std::int64_t events = 0;
        for (const Track& track : split.song.tracks) {
            events += track.eventCount - 2;
        }
        EXPECT_EQ(events, whole.song.tracks[0].eventCount - 2);
        EXPECT_EQ(split.song.songLength, whole.song.songLength);
    }
}

} // namespace
} // namespace tracksmith::song
