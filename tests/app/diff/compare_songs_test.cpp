#include "app/diff/compare_songs.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/recording_message_host.h"
#include "support/midi_file_builder.h"

#include "app/diff/difference_json.h"
#include "song/midi_file_reader.h"
#include "song/note_pairing.h"
#include "song/time_map.h"

namespace tracksmith::diff {
namespace {

using test::MidiFileBuilder;
using test::TrackBuilder;

constexpr int kMeasure = 1920;

/// A note or another message of the melody's channel, at its tick.
struct Event {
    int tick = 0;
    int status = 0x92;
    int data1 = 60;
    int data2 = 90;
};

std::vector<Event> Sorted(std::vector<Event> events) {
    std::ranges::stable_sort(events, {}, &Event::tick);
    return events;
}

// Measures of four notes each that say by their keys which measure they are; `order` names them.
std::vector<Event> Melody(const std::string& order) {
    std::vector<Event> events;
    int start = 0;
    for (const char measure : order) {
        for (int beat = 0; measure != ' ' && beat < 4; ++beat) {
            const int key = 40 + (measure - 'a') * 5 + beat * (measure % 3 + 1);
            events.push_back({start + beat * 480, 0x92, key, 90});
            events.push_back({start + beat * 480 + 240, 0x82, key, 64});
        }
        start += kMeasure;
    }
    return events;
}

void Load(song::Song& song, const std::vector<Event>& events, int length, bool oneTrack = false) {
    TrackBuilder conductor;
    conductor.Tempo(0, 500'000).Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7});
    TrackBuilder melody;
    TrackBuilder& track = oneTrack ? conductor : melody;
    track.Short(0, 0xB2, 7, 100).Program(0, 2, 24);
    int now = 0;
    for (const Event& event : Sorted(events)) {
        const auto delta = static_cast<std::uint64_t>(event.tick - now);
        now = event.tick;
        if ((event.status & 0xF0) == 0xC0) {
            track.Program(delta, event.status & 0x0F, event.data1);
        } else if (event.status == 0x51) {
            track.Tempo(delta, static_cast<std::uint32_t>(event.data1));
        } else if (event.status == 0x05) {
            track.Text(delta, 5, std::string(static_cast<std::size_t>(event.data1), 'x'));
        } else {
            track.Short(delta, event.status, event.data1, event.data2);
        }
    }
    track.End(static_cast<std::uint64_t>(length - now));
    MidiFileBuilder file(oneTrack ? 0 : 1);
    file.Track(oneTrack ? track : conductor.End(static_cast<std::uint64_t>(length)));
    if (!oneTrack) {
        file.Track(melody);
    }
    RecordingMessageHost host;
    song::DecodeMidiData(song, file.Build(), {}, host);
    song::UpdateTimeZoneData(song);
}

// The rows in words, without the places of channel rows.
std::string Said(const Differences& differences, const song::Song& before,
                 const song::Song& after) {
    std::string said;
    for (const Difference& row : differences.rows) {
        const DifferenceWords words = WordsOf(row, before, after, {Language::English});
        said +=
            words.position + " " + words.kind + ": " + words.before + " -> " + words.after + "\n";
    }
    return said;
}

std::string Compare(const std::vector<Event>& before, const std::vector<Event>& after,
                    int measuresBefore = 12, int measuresAfter = 12) {
    song::Song earlier;
    song::Song later;
    Load(earlier, before, measuresBefore * kMeasure);
    Load(later, after, measuresAfter * kMeasure);
    return Said(CompareSongs(earlier, later), earlier, later);
}

struct EditCase {
    const char* name;
    std::function<void(std::vector<Event>&)> edit;
    const char* said;
};

class EditTest : public testing::TestWithParam<EditCase> {};

const std::string kSong = "abcdefghijkl";

TEST_P(EditTest, IsOneRow) {
    std::vector<Event> after = Melody(kSong);
    after.push_back({960, 0xB2, 11, 80});
    after.push_back({2000, 0xB2, 11, 90});
    after.push_back({3000, 0x51, 400'000});
    after.push_back({3000, 0x05, 2});
    const std::vector<Event> before = after;
    GetParam().edit(after);
    EXPECT_EQ(Compare(before, after), GetParam().said);
}

void All(std::vector<Event>& events, int status, const std::function<void(Event&)>& edit) {
    for (Event& event : events) {
        if ((event.status & 0xF0) == status) {
            edit(event);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, EditTest,
    testing::Values(
        EditCase{"Nothing", [](auto&) {}, ""},
        EditCase{"Controller", [](auto& song) { All(song, 0xB0, [](Event& e) { e.data2 += 12; }); },
                 "001.03.000 Controller: Expression 80, 2 times -> all by +12\n"},
        EditCase{"MovedControllers",
                 [](auto& song) { All(song, 0xB0, [](Event& e) { e.tick += 77; }); },
                 "001.03.077 Controller: Expression 80, 2 times -> moved from 001.03.000\n"},
        EditCase{"MovedButChanged",
                 [](auto& song) {
                     All(song, 0xB0, [](Event& e) {
                         e.data2 += e.tick / 1000;
                         e.tick += 77;
                     });
                 },
                 "001.03.000 Controller: Expression 80, 2 times -> –\n"
                 "001.03.077 Controller: – -> Expression 80, 2 times\n"},
        EditCase{"MovedText", [](auto& song) { All(song, 0x00, [](Event& e) { e.tick -= 10; }); },
                 "002.03.110 Text: \"xx\" -> moved from 002.03.120\n"},
        EditCase{"Program",
                 [](auto& song) {
                     song.push_back({10, 0xC2, 30});
                 },
                 "001.01.010 Voice: ?·?·25 -> ?·?·31\n"},
        EditCase{"SameProgram",
                 [](auto& song) {
                     song.push_back({10, 0xC2, 24});
                 },
                 "001.01.010 Voice: ?·?·25 -> set here too\n"},
        EditCase{"Velocity", [](auto& song) { All(song, 0x90, [](Event& e) { e.data2 -= 5; }); },
                 "001.01.000 Note: 48 notes: Velocity 90 -> all by -5\n"},
        EditCase{"Shorter", [](auto& song) { All(song, 0x80, [](Event& e) { e.tick -= 100; }); },
                 "012.04.150 Tempo: End at 012.04.250 -> End at 012.04.150\n"
                 "001.01.140 Note: 48 notes -> other end\n"},
        EditCase{"Transposed",
                 [](auto& song) {
                     All(song, 0x90, [](Event& e) { e.data1 += 2; });
                     All(song, 0x80, [](Event& e) { e.data1 += 2; });
                 },
                 "001.01.000 Note: 48 notes -> +2 semitones\n"},
        EditCase{"TransposedInside",
                 [](auto& song) {
                     for (Event& event : song) {
                         const bool inside =
                             event.tick >= 3 * kMeasure && event.tick < 9 * kMeasure;
                         const bool isNote = (event.status & 0xE0) == 0x80;
                         event.data1 += inside && isNote ? 3 : 0;
                     }
                 },
                 "004.01.000 Note: 24 notes -> +3 semitones\n"},
        EditCase{"Added",
                 [](auto& song) {
                     song.push_back({5000, 0x92, 100, 90});
                     song.push_back({5100, 0x82, 100, 64});
                 },
                 "003.03.200 Note: – -> 1 note\n"},
        EditCase{"Tempo", [](auto& song) { All(song, 0x50, [](Event& e) { e.data1 = 500'000; }); },
                 "002.03.120 Tempo: 150 BPM -> 120 BPM\n"},
        EditCase{"Text", [](auto& song) { All(song, 0x00, [](Event& e) { e.data1 = 3; }); },
                 "002.03.120 Text: \"xx\" -> \"xxx\"\n"}),
    [](const auto& tested) { return std::string(tested.param.name); });

struct StretchCase {
    const char* order;
    const char* said;
};

class StretchTest : public testing::TestWithParam<StretchCase> {};

TEST_P(StretchTest, IsOneRow) {
    const std::string order = GetParam().order;
    EXPECT_EQ(Compare(Melody(kSong), Melody(order), 12, static_cast<int>(order.size())),
              GetParam().said);
}

INSTANTIATE_TEST_SUITE_P(
    Stretches, StretchTest,
    testing::Values(
        StretchCase{"abcghijkl", "004.01.000 Whole song: 004.01.000 to 007.01.000 -> cut out\n"},
        StretchCase{"defghijkl", "001.01.000 Whole song: 001.01.000 to 004.01.000 -> cut out\n"},
        StretchCase{"abcdefgh", "009.01.000 Whole song: 009.01.000 to 013.01.000 -> cut out\n"},
        StretchCase{"abcdefghbcdijkl",
                    "009.01.000 Whole song: 002.01.000 to 005.01.000 -> copied to 009.01.000\n"},
        StretchCase{"abcdefghijklab",
                    "013.01.000 Whole song: 001.01.000 to 003.01.000 -> copied to 013.01.000\n"},
        StretchCase{" abcdefghijkl", "001.01.000 Whole song: – -> put in up to 002.01.000\n"},
        StretchCase{"abefghikl",
                    "003.01.000 Whole song: 003.01.000 to 005.01.000 -> cut out\n"
                    "008.01.000 Whole song: 010.01.000 to 011.01.000 -> cut out\n"}));

// A note that sounds over the start of what is copied is begun again in the copy.
TEST(CompareSongsTest, KnowsACopyWithNotesThatAreBegunAgain) {
    const auto held = [](std::vector<Event> events, int start) {
        events.push_back({start, 0x92, 30, 90});
        events.push_back({kMeasure + 100, 0x82, 30, 64});
        return events;
    };
    const std::vector<Event> before = held(Melody(kSong), kMeasure - 100);
    std::vector<Event> after = held(Melody("abcdefghbcdijkl"), kMeasure - 100);
    after.push_back({8 * kMeasure, 0x92, 30, 90});
    after.push_back({8 * kMeasure + 100, 0x82, 30, 64});
    EXPECT_EQ(Compare(before, after, 12, 15),
              "009.01.000 Whole song: 002.01.000 to 005.01.000 -> copied to 009.01.000\n");
}

// Each edit is cheap to explain by itself; none may be hidden by a longer detour through stretches
// that are alike.
TEST(CompareSongsTest, FindsEveryEditInMusicThatRepeats) {
    const std::string verse = "abacabad";
    const std::string song = verse + "efgh" + verse + "ijkl" + verse + "efgh" + verse;
    std::string edited = song;
    edited.insert(30, song.substr(8, 3)); // measures 9 to 11 once more, before measure 31
    edited.erase(20, 2);
    edited.erase(9, 2);
    EXPECT_EQ(Compare(Melody(song), Melody(edited), static_cast<int>(song.size()),
                      static_cast<int>(edited.size())),
              "010.01.000 Whole song: 010.01.000 to 012.01.000 -> cut out\n"
              "019.01.000 Whole song: 021.01.000 to 023.01.000 -> cut out\n"
              "027.01.000 Whole song: 009.01.000 to 012.01.000 -> copied to 027.01.000\n");
}

// What a range tool leaves: a cut, and behind it another edit. What is carried over the seam says
// nothing new, but other edits at it do.
TEST(CompareSongsTest, FollowsTheNotesBehindACut) {
    std::vector<Event> before = Melody(kSong);
    before.push_back({4 * kMeasure, 0xB2, 11, 80});
    std::vector<Event> after = Melody("abcghijkl");
    after.push_back({5 * kMeasure + 7, 0xB2, 1, 9});
    after.push_back({3 * kMeasure + 1, 0xB2, 11, 80}); // carried
    after.push_back({3 * kMeasure - 1, 0x82, 90, 64});
    after.push_back({3 * kMeasure, 0xB2, 11, 81});
    after.push_back({3 * kMeasure, 0xC2, 30});
    after.push_back({3 * kMeasure + 1, 0x92, 90, 64});
    const std::string said = Compare(before, after, 12, 9);
    EXPECT_EQ(said,
              "004.01.000 Whole song: 004.01.000 to 007.01.000 -> cut out\n"
              "004.01.000 Voice: ?·?·25 -> ?·?·31\n"
              "004.01.000 Controller: – -> Expression 81\n"
              "006.01.007 Controller: – -> Modulation 9\n"
              "004.01.001 Note: – -> 1 note\n");
}

// The length of a song is that of its last event.
TEST(CompareSongsTest, TracksAndSilenceAtTheEndDoNotMatter) {
    song::Song several;
    song::Song one;
    song::Song longer;
    Load(several, Melody(kSong), 12 * kMeasure);
    Load(one, Melody(kSong), 12 * kMeasure, true);
    Load(longer, Melody(kSong), 13 * kMeasure);
    EXPECT_TRUE(CompareSongs(several, one).Same());
    EXPECT_TRUE(CompareSongs(several, longer).Same());
}

TEST(CompareSongsTest, AsTextAndJson) {
    song::Song before;
    song::Song after;
    Load(before, Melody("ab"), 2 * kMeasure);
    std::vector<Event> changed = Melody("ab");
    changed.push_back({10, 0xB2, 7, 90});
    Load(after, changed, 2 * kMeasure);
    const Differences differences = CompareSongs(before, after);
    EXPECT_EQ(DifferencesText(differences, before, after, {Language::German}),
              "Kanal 3\n  001.01.010  Controller: – -> Lautstärke 90\n");
    EXPECT_EQ(DifferencesText(Differences(), before, after, {Language::English}),
              "No difference.\n");
    const std::string json =
        DifferencesJson(differences, before, after, "a", "b", {Language::English});
    EXPECT_NE(json.find(R"("same":false,"counts":{"voices":0,"controllers":1)"), std::string::npos)
        << json;
    EXPECT_NE(json.find(R"("channel":3,"kind":"controllers","change":"added","control":7)"),
              std::string::npos)
        << json;
}

TEST(CompareSongsTest, NamesVoicesWhereANamerKnowsThem) {
    song::Song before;
    song::Song after;
    Load(before, {}, kMeasure);
    Load(after, {{10, 0xB2, 32, 112}, {10, 0xC2, 30}}, kMeasure);
    const Differences differences = CompareSongs(before, after);
    ASSERT_EQ(differences.rows.size(), 1U);
    const Wording wording{
        Language::English, [](std::uint8_t channel, auto msb, auto lsb, std::uint8_t program) {
            EXPECT_EQ(channel, 2);
            EXPECT_FALSE(msb);
            return lsb ? "Lead " + std::to_string(*lsb) + "/" + std::to_string(program) : "";
        }};
    const DifferenceWords words = WordsOf(differences.rows[0], before, after, wording);
    EXPECT_EQ(words.before, "?·?·25");
    EXPECT_EQ(words.after, "Lead 112/30 (?·112·31)");
}

} // namespace
} // namespace tracksmith::diff
