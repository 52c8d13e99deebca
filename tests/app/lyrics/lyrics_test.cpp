#include "app/lyrics/lyrics.h"

#include <gtest/gtest.h>

#include "support/song_assert.h"

namespace tracksmith::lyrics {
namespace {

using namespace test;

constexpr int kText = 0x01;
constexpr int kLyric = 0x05;

/// Texts of one track, a beat of 480 ticks apart.
Bytes Sung(int type, const std::vector<std::string>& texts, const TrackBuilder& other = {}) {
    TrackBuilder track;
    for (const std::string& text : texts) {
        track.Text(480, type, text);
    }
    return MidiFileBuilder().Track(TrackBuilder(other).End()).Track(track.End()).Build();
}

// "10:Hel 20:lo|30:..." with ticks in beats.
std::string Shown(const Lyrics& lyrics) {
    std::string text;
    for (const Line& line : lyrics.lines) {
        text += text.empty() ? "" : "|";
        std::uint32_t from = 0;
        for (const Syllable& syllable : line.syllables) {
            text += std::to_string(syllable.tick / 480) + ":" +
                    line.text.substr(from, syllable.end - from);
            from = syllable.end;
        }
    }
    return text;
}

struct Case {
    const char* what;
    int type;
    std::vector<std::string> texts;
    const char* shown;
};

void PrintTo(const Case& each, std::ostream* out) {
    *out << each.what;
}

class LineTest : public testing::TestWithParam<Case> {};

TEST_P(LineTest, MakesLines) {
    DecodedSong decoded(Sung(GetParam().type, GetParam().texts));
    EXPECT_EQ(Shown(ReadLyrics(decoded.song)), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Lyrics, LineTest,
    testing::Values(
        Case{"ends of lines and paragraphs",
             kLyric,
             {"Oh ", "my\r", "love\n", "is\r\n", "gone"},
             "1:Oh 2:my|3:love|4:is|5:gone"},
        Case{"karaoke texts",
             kText,
             {"@KMIDI KARAOKE FILE", "@TWaltz", "\\When ", "the", "/lights ", "go", "/", "out"},
             "3:When 4:the|5:lights 6:go|8:out"},
        Case{"remarks are not sung", kText, {"made by me", "and/or you"}, ""},
        Case{"tags and chords in the words",
             kLyric,
             {"{@Latin}{#Title=Waltz}", "%Am7", "Oh ", "\\%5 ", "and \r"},
             "3:Oh 4:%5 5:and "},
        Case{"hyphens instead of spaces",
             kLyric,
             {"mu-", "sic", "plays", "-"},
             "1:mu2:sic 3:plays 4:- "},
        Case{"a line each",
             kLyric,
             {"When the lights", "are low", "we dance"},
             "1:When the lights |2:are low |3:we dance "},
        Case{"signs for line ends behind the words",
             kLyric,
             {"one ", "two/", "three ", "four\\"},
             "1:one 2:two|3:three 4:four"},
        Case{"long lines break between words",
             kLyric,
             {std::string(50, 'a') + " ", "bb", "bbbbbbbbb ", "cc", " dd", "\r"},
             "1:aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa 2:bb3:bbbbbbbbb |4:cc5: dd"},
        Case{"zeros, bare spaces and marks alone",
             kLyric,
             {std::string("a \0", 3), " ", "\r", "/"},
             "1:a 2: "},
        Case{"Windows-1252", kLyric, {"\x84 Gr\xFC\xDF ", "dich"}, "1:„ Grüß 2:dich"},
        Case{"DOS", kLyric, {"Gr\x81\xE1 ", "sch\x94n"}, "1:Grüß 2:schön"},
        Case{"Macintosh", kLyric, {"Gr\x9F\xA7 ", "sch\x9An ", "f\x9Fr"}, "1:Grüß 2:schön 3:für"},
        Case{"UTF-8", kLyric, {"Gr\xC3\xBC\xC3\x9F ", "dich"}, "1:Grüß 2:dich"}));

TEST(Lyrics, TakesTheTrackWithMostAndTheEncodingAskedFor) {
    DecodedSong decoded(
        MidiFileBuilder()
            .Track(TrackBuilder().Text(0, kLyric, "no").Text(0, kText, "\\a").End())
            .Track(TrackBuilder().Text(0, kText, "\\b ").Text(9, kText, "/b\x9C ").End())
            .Track(TrackBuilder().Text(0, kLyric, "c ").Text(480, kLyric, "c\x9C\r").End())
            .Build());
    EXPECT_EQ(Shown(ReadLyrics(decoded.song, TextEncoding::Windows1250)), "0:c 1:cś");
    decoded.song.tracks[2].ignored = 1;
    EXPECT_EQ(Shown(ReadLyrics(decoded.song, TextEncoding::MacRoman)), "0:b |0:bú ");
}

TEST(Lyrics, NamesChords) {
    const auto meta = [](const Bytes& chord) {
        Bytes bytes{0x43, 0x7B, 0x01};
        Append(bytes, chord);
        return TrackBuilder().Meta(0, 0x7F, bytes);
    };
    // Each follows D5, which stays where the event is no chord ("-").
    const std::vector<std::pair<TrackBuilder, std::string>> chords{
        {meta({0x31, 0x00, 0x7F, 0x7F}), "C"},
        {meta({0x36, 0x0A, 0x32, 0x7F}), "Am7/D"},
        {meta({0x27, 0x13, 0x27, 0x7F}), "Bb7"},
        {meta({0x44, 0x21, 0x7F, 0x7F}), "F#sus2"},
        {meta({0x13, 0x11, 0x65, 0x00}), "Ebbdim/G###"},
        {meta({0x31, 0x22, 0x7F, 0x7F}), ""},
        {meta({0x7F, 0x7F, 0x7F, 0x7F}), ""},
        {meta({0x38, 0x00, 0x7F, 0x7F}), "-"},
        {meta({0x31, 0x23, 0x7F, 0x7F}), "-"},
        {meta({0x31, 0x00}), "-"},
        {TrackBuilder().Meta(0, 0x7F, {0x43, 0x7B, 0x02, 0x31, 0, 0x7F, 0x7F}), "-"},
        {TrackBuilder().Sysex(0, {0x43, 0x7E, 0x02, 0x35, 0x08, 0x7F, 0x7F, 0xF7}), "Gm"},
        {TrackBuilder().Text(0, kLyric, "%Dm7 "), "Dm7"}};
    for (const auto& [track, name] : chords) {
        const Bytes chunk = TrackBuilder(track).End().Chunk();
        DecodedSong decoded(MidiFileBuilder()
                                .Track(TrackBuilder(meta({0x32, 0x1F, 0x7F, 0x7F})).End())
                                .Track(TrackBuilder()
                                           .Raw(480, {0x90, 60, 1})
                                           .Loose(Bytes(chunk.begin() + 8, chunk.end())))
                                .Build());
        const Lyrics lyrics = ReadLyrics(decoded.song);
        ASSERT_EQ(lyrics.chords.size(), name == "-" ? 1U : 2U) << name;
        EXPECT_EQ(lyrics.chords.back().name, name == "-" ? "D5" : name);
        EXPECT_EQ(lyrics.chords.back().tick, name == "-" ? 0 : 480);
    }
}

TEST(Lyrics, FindsThePlace) {
    TrackBuilder chord;
    chord.Meta(960, 0x7F, {0x43, 0x7B, 1, 0x31, 0, 0x7F, 0x7F});
    DecodedSong decoded(Sung(kLyric, {"Oh ", "my\r", "love", "\r", "", "", "end"}, chord));
    const Lyrics lyrics = ReadLyrics(decoded.song);
    ASSERT_EQ(lyrics.lines.size(), 3U);
    const auto place = [&](std::int32_t tick) {
        const Place found = PlaceAt(lyrics, tick);
        return std::to_string(found.line) + " " + std::to_string(found.sung) +
               (found.chord == Place::kNone ? "" : " " + std::to_string(found.chord));
    };
    EXPECT_EQ(place(0), "0 0");
    EXPECT_EQ(place(479), "0 0");
    EXPECT_EQ(place(480), "0 3");
    EXPECT_EQ(place(960), "0 5 0");
    EXPECT_EQ(place(1199), "0 5 0"); // half way to the next line
    EXPECT_EQ(place(1200), "1 0 0");
    EXPECT_EQ(place(1440), "1 4 0");
    EXPECT_EQ(place(2879), "1 4 0"); // a beat before the last line
    EXPECT_EQ(place(2880), "2 0 0");
    EXPECT_EQ(place(99999), "2 3 0");
    EXPECT_EQ(PlaceAt(Lyrics(), 5), Place());
}

} // namespace
} // namespace tracksmith::lyrics
