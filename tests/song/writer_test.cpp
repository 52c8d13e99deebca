#include <functional>
#include <gtest/gtest.h>

#include "support/song_assert.h"

#include "song/midi_file_writer.h"

namespace tracksmith::song {
namespace {

using namespace test;

const Bytes kPort = {0x00, 0xFF, 0x21, 0x01, 0x00};

/// The event bytes of chunk `index` of an encoded file.
Bytes ChunkOf(const Bytes& file, int index = 0) {
    std::size_t at = 14;
    for (;; --index) {
        const std::size_t length = (std::size_t{file.at(at + 4)} << 24) |
                                   (std::size_t{file.at(at + 5)} << 16) |
                                   (std::size_t{file.at(at + 6)} << 8) | file.at(at + 7);
        const auto start = file.begin() + static_cast<std::ptrdiff_t>(at + 8);
        if (index == 0) {
            return {start, start + static_cast<std::ptrdiff_t>(length)};
        }
        at += 8 + length;
    }
}

/// What a one-track song of `track` is encoded to: the bytes between the port event and the End of
/// Track, as hexadecimal digits.
std::string Encoded(
    const TrackBuilder& track, const EncodeOptions& options = {},
    const std::function<void(Song&)>& edit = [](Song&) {}) {
    DecodedSong decoded(MidiFileBuilder().Track(TrackBuilder(track).End()).Build());
    edit(decoded.song);
    const Bytes chunk = ChunkOf(EncodeFormat1(decoded.song, options, decoded.host));
    const std::string text = Hex(chunk);
    const std::string port = Hex(kPort);
    EXPECT_EQ(text.substr(0, port.size()), port);
    EXPECT_EQ(text.substr(text.size() - 6), "FF2F00");
    return text.substr(port.size(), text.size() - port.size() - 10);
}

EncodeOptions Running() {
    EncodeOptions options;
    options.useRunningStatus = true;
    return options;
}

// The delta of End of Track in these songs takes two bytes: the song is 999 ticks long.
TEST(Writer, RunningStatusLeavesOutEqualStatusOnly) {
    const TrackBuilder track = TrackBuilder()
                                   .Note(0, 0, 60, 1)
                                   .Note(1, 0, 61, 1)
                                   .Note(0, 1, 62, 1)
                                   .Program(2, 1, 5)
                                   .Program(0, 1, 6);
    EXPECT_EQ(Encoded(track),
              "00903C01"
              "01903D01"
              "00913E01"
              "02C105"
              "00C106");
    EXPECT_EQ(Encoded(track, Running()),
              "00903C01"
              "013D01"
              "00913E01"
              "02C105"
              "0006");
}

// Each length of a delta time at its ends, behind running status and without it.
TEST(Writer, DeltaTimesOfEveryLengthAreWrittenAsTheyWereRead) {
    TrackBuilder track;
    for (const std::uint64_t delta :
         {0, 1, 127, 128, 8191, 8192, 16'383, 16'384, 16'385, 2'097'151, 2'097'152, 268'435'455}) {
        track.Note(delta, 0, 60, 1).Program(delta, 1, 5).Note(0, 0, 61, 1).Note(delta, 0, 62, 1);
    }
    const Bytes chunk = TrackBuilder(track).End(10).Chunk();
    DecodedSong decoded(MidiFileBuilder().Track(track.End(10)).Build());
    EXPECT_EQ(Hex(ChunkOf(EncodeFormat1(decoded.song, {}, decoded.host))),
              Hex(kPort) + Hex(std::span(chunk).subspan(8)));
    const std::string ticks = decoded.List(0);
    DecodedSong again(EncodeFormat1(decoded.song, Running(), decoded.host));
    EXPECT_EQ(again.List(0), ticks);
}

TEST(Writer, MetaAndSysexEndRunningStatus) {
    const TrackBuilder track = TrackBuilder()
                                   .Note(0, 0, 60, 1)
                                   .Text(0, 1, "x")
                                   .Note(0, 0, 61, 1)
                                   .Sysex(0, {0x43, 0xF7})
                                   .Note(0, 0, 62, 1);
    EXPECT_EQ(Encoded(track, Running()),
              "00903C01"
              "00FF010178"
              "00903D01"
              "00F00243F7"
              "00903E01");
}

TEST(Writer, EventsOfLengthZeroAreLeftOutAndTheirTimeIsKept) {
    const TrackBuilder track =
        TrackBuilder().Text(0, 1, "").Note(5, 0, 60, 1).Sysex(5, {0xF7}).Note(5, 0, 61, 1);
    EXPECT_EQ(Encoded(track),
              "05903C01"
              "05F001F7"
              "05903D01");
    EXPECT_EQ(Encoded(track, Running(),
                      [](Song& song) {
                          song.tracks[0].last->prev->prev->length = 0; // a removed message
                          InsertByTick(song.tracks[0], NewShortEvent(song.pool, 7, 0xF8, 0, 0));
                      }),
              "05903C01"
              "0A3D01");
}

TEST(Writer, AnEventBeforeTheLastWrittenOneGetsDeltaZero) {
    EXPECT_EQ(Encoded(TrackBuilder().Note(100, 0, 60, 1).Text(0, 1, "x").Note(50, 0, 61, 1), {},
                      [](Song& song) { song.tracks[0].last->prev->prev->tick = 40; }),
              "64903C01"
              "00FF010178"
              "32903D01");
}

TEST(Writer, DataBytesAreMaskedAndPayloadsCutToTheSmallerLength) {
    EXPECT_EQ(Encoded(TrackBuilder().Short(0, 0xB0, 7, 200)), "00B00748");
    EXPECT_EQ(Encoded(TrackBuilder().Text(0, 1, "abc").Text(0, 1, "def"), {},
                      [](Song& song) {
                          song.tracks[0].first->next->length = 2;
                          song.tracks[0].last->prev->length = 100;
                      }),
              "00FF01026162"
              "00FF0103646566");
    EXPECT_EQ(Encoded(TrackBuilder().Note(0, 0, 60, 1), {},
                      [](Song& song) { song.tracks[0].first->next->length = 9; }),
              "00903C01");
}

TEST(Writer, RealTimeMessagesOfVariableKindHaveOnlyTheirStatus) {
    EXPECT_EQ(Encoded(TrackBuilder().Sysex(3, {0xF7}), {},
                      [](Song& song) { song.tracks[0].last->prev->status = 0xFA; }),
              "03FA");
}

TEST(Writer, OnlyLyricsAreAdjusted) {
    EncodeOptions options;
    options.adjustLyric = [](std::span<const std::uint8_t> bytes) {
        Bytes longer(bytes.begin(), bytes.end());
        longer.push_back('!');
        return longer;
    };
    EXPECT_EQ(Encoded(TrackBuilder().Text(0, 5, "la").Text(0, 1, "la"), options),
              "00FF05036C6121"
              "00FF01026C61");
}

struct Uncodable {
    const char* name;
    std::function<void(MidiEvent&)> damage;
};

class CodingErrorTest : public testing::TestWithParam<Uncodable> {};

TEST_P(CodingErrorTest, IsShownAndRaised) {
    for (const Language language : {Language::German, Language::English}) {
        for (const auto& encode : {EncodeFormat0, EncodeFormat1}) {
            DecodedSong decoded(
                MidiFileBuilder().Track(TrackBuilder().Sysex(0, {0xF7}).End()).Build());
            GetParam().damage(*decoded.song.tracks[0].first->next);
            RecordingMessageHost host(language);
            EXPECT_THROW(encode(decoded.song, {}, host), EMidiError);
            EXPECT_EQ(host.messages,
                      std::vector<std::string>{language == Language::German
                                                   ? "Fehler bei der Kodierung der MidiDatei!"
                                                   : "Error coding the midi file!"});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Damages, CodingErrorTest,
    testing::Values(Uncodable{"Kind0", [](MidiEvent& event) { event.kind = 0; }},
                    Uncodable{"Kind3", [](MidiEvent& event) { event.kind = 3; }},
                    Uncodable{"Status", [](MidiEvent& event) { event.status = 0xF1; }},
                    Uncodable{"LongNote", [](MidiEvent& event) { event.status = 0x90; }},
                    Uncodable{"ShortMeta", [](MidiEvent& event) { event.kind = 1; }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Writer, Format0MergesByTickWithOnePortAndOneEnd) {
    DecodedSong decoded(
        MidiFileBuilder(1, 0x1E0)
            .Track(TrackBuilder().Tempo(0, 500'000).Text(10, 1, "a").End())
            .Track(TrackBuilder().Note(0, 0, 60, 1).Note(10, 0, 61, 1).Note(5, 0, 62, 1).End())
            .Track(TrackBuilder().Note(10, 1, 70, 1).End())
            .Build());
    const std::string header =
        "4D54686400000006"
        "0000"
        "0001"
        "01E0"
        "4D54726B";
    const Bytes file = EncodeFormat0(decoded.song, {}, decoded.host);
    EXPECT_EQ(Hex(file).substr(0, header.size()), header);
    const std::string events =
        "00FF510307A120"
        "00903C01"
        "0AFF010161"
        "00903D01"
        "00914601"
        "05903E01"
        "8758FF2F00";
    EXPECT_EQ(Hex(ChunkOf(file)), Hex(kPort) + events);
    EncodeOptions options;
    options.omitPortEvents = true;
    EXPECT_EQ(Hex(ChunkOf(EncodeFormat0(decoded.song, options, decoded.host))), events);
    const Bytes chunks = EncodeFormat1(decoded.song, options, decoded.host);
    EXPECT_EQ(Hex(chunks).substr(16, 12),
              "0001"
              "0003"
              "01E0");
    EXPECT_EQ(Hex(ChunkOf(chunks, 2)),
              "0A914601"
              "875DFF2F00");
}

TEST(Writer, ASongWithoutTracksOrWithTooManyIsNotWritten) {
    Song song;
    RecordingMessageHost host;
    EXPECT_THROW(EncodeFormat0(song, {}, host), EMidiError);
    EXPECT_THROW(EncodeFormat1(song, {}, host), EMidiError);
    song.tracks.resize(65'536);
    EXPECT_THROW(EncodeFormat1(song, {}, host), EMidiError);
    EXPECT_EQ(host.messages.size(), 3U);
}

struct Generation {
    const char* name;
    int format;
    bool running;
    bool split;
};

class GenerationTest : public testing::TestWithParam<Generation> {};

TEST_P(GenerationTest, SavedFilesLoadToTheSameSong) {
    EncodeOptions options;
    options.useRunningStatus = GetParam().running;
    DecodeOptions decode;
    decode.splitFormat0 = GetParam().split;
    const auto encode = GetParam().format == 0 ? EncodeFormat0 : EncodeFormat1;
    for (unsigned seed = 0; seed < 60; ++seed) {
        DecodedSong first(RandomFile(seed, static_cast<int>(seed % 2), seed % 3 == 0), decode);
        const Bytes saved = encode(first.song, options, first.host);
        DecodedSong second(saved, decode);
        EXPECT_EQ(second.song.songLength, first.song.songLength);
        if (GetParam().format == 1 && first.song.trackCount > 1) {
            for (std::size_t i = 0; i < first.song.tracks.size(); ++i) {
                ASSERT_EQ(second.List(i), first.List(i)) << "seed " << seed;
            }
        }
        const Bytes again = encode(second.song, options, second.host);
        DecodedSong third(again, decode);
        EXPECT_EQ(encode(third.song, options, third.host), again) << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Options, GenerationTest,
                         testing::Values(Generation{"Format1", 1, false, false},
                                         Generation{"Format1Running", 1, true, false},
                                         Generation{"Format0", 0, false, false},
                                         Generation{"Format0Running", 0, true, false},
                                         Generation{"SplitAndMerged", 0, true, true}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace tracksmith::song
