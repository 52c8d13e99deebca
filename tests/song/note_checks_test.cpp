#include <algorithm>
#include <cctype>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "support/song_assert.h"

#include "song/note_balance.h"
#include "song/note_length.h"
#include "song/note_overlaps.h"
#include "song/note_pairing.h"

namespace tracksmith::test {
namespace {

// "0+60 5-60 5+61" : note-ons and note-offs by tick and key; "=" is another event at that tick.
TrackBuilder TrackOf(const std::string& notes, int channel) {
    std::istringstream words(notes);
    TrackBuilder track;
    int last = 0;
    for (std::string word; words >> word;) {
        const std::size_t sign = word.find_first_of("+-=");
        const int tick = std::stoi(word.substr(0, sign));
        const auto delta = static_cast<std::uint64_t>(tick - last);
        last = tick;
        if (word[sign] == '=') {
            track.Short(delta, 0xB0 | channel, 11, 100);
            continue;
        }
        const int key = std::stoi(word.substr(sign + 1));
        word[sign] == '+' ? track.Note(delta, channel, key, 90)
                          : track.NoteOff(delta, channel, key);
    }
    return track.End();
}

Bytes FileOf(const std::string& notes, int channel = 2, int format = 1) {
    return MidiFileBuilder(format).Track(TrackOf(notes, channel)).Build();
}

// The notes of the track in the same notation.
std::string NotesOf(const song::Track& track) {
    std::string text;
    for (song::ConstEventLink event = track.first->next; event->next; event = event->next) {
        text += (text.empty() ? "" : " ") + std::to_string(event->tick);
        const bool on = event->IsNoteOn();
        text += on || event->Command() == song::kNoteOff
                    ? (on ? "+" : "-") + std::to_string(event->data1)
                    : "=";
    }
    return text;
}

// For each note-off the tick of its note-on, "x" without one.
std::string PairsOf(const song::Track& track) {
    std::string text;
    for (song::ConstEventLink event = track.first; event; event = event->next) {
        if (event->Command() == song::kNoteOff) {
            text += event->noteOnLink ? std::to_string(event->noteOnLink->tick) + " " : "x ";
        } else {
            EXPECT_FALSE(event->noteOnLink);
        }
    }
    return text;
}

struct PairCase {
    const char* notes;
    const char* pairs;
    bool balanced;
};

class NotePairs : public testing::TestWithParam<PairCase> {};

TEST_P(NotePairs, EndTheOldestOpenNoteWhileReadingAndAfterwards) {
    for (const bool split : {false, true}) {
        DecodedSong decoded(FileOf(GetParam().notes, 2, 0), {.splitFormat0 = split});
        song::Track& track = decoded.song.tracks[split ? 3 : 0];
        EXPECT_EQ(PairsOf(track), GetParam().pairs);
        EXPECT_EQ(decoded.result.balanced, GetParam().balanced);
        song::SetNoteOnOffPointers(decoded.song);
        EXPECT_EQ(PairsOf(track), GetParam().pairs);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, NotePairs,
    testing::Values(PairCase{"0+60 5+61 9-60 9-61 9+60 20-60", "0 5 9 ", true},
                    PairCase{"0+60 5+60 9+60 10-60 12-60 14-60 20+60 30-60", "0 5 9 20 ", true},
                    PairCase{"3-60 5+60 8-60 9-60", "x 5 x ", false},
                    PairCase{"0+60 0+60 4-60", "0 ", false}, PairCase{"0= 5=", "", true},
                    PairCase{"0-60 0-61", "x x ", false}));

TEST(NotePairs, BelongToOneTrackAndChannel) {
    const auto second = TrackBuilder().NoteOff(10, 3, 60).NoteOff(10, 2, 60).Note(0, 2, 60, 1);
    DecodedSong decoded(MidiFileBuilder()
                            .Track(TrackOf("0+60 4+60", 2))
                            .Track(TrackBuilder(second).NoteOff(5, 2, 60).End())
                            .Build());
    EXPECT_EQ(PairsOf(decoded.song.tracks[1]), "x x 20 ");
    decoded.song.tracks[1].last->prev->length = 0; // removed
    song::SetNoteOnOffPointers(decoded.song);
    EXPECT_FALSE(decoded.song.tracks[1].last->prev->noteOnLink);
}

struct LengthCase {
    const char* notes;
    const char* repaired;
    const char* loaded;
    int lengthened; // by loading
};

class NoteLength : public testing::TestWithParam<LengthCase> {};

TEST_P(NoteLength, ReachesTheMinimum) {
    const auto& [notes, repaired, loaded, lengthened] = GetParam();
    const song::DecodeOptions options{.minimumNoteLength = 20};
    DecodedSong decoded(FileOf(notes), options);
    decoded.Timed();
    song::CheckForZeroLength(decoded.song, {20});
    EXPECT_EQ(NotesOf(decoded.song.tracks[0]), repaired);
    EXPECT_EQ(song::CheckSong(decoded.song), "");

    DecodedSong load(FileOf(notes), options);
    load.Timed();
    EXPECT_EQ(song::LengthenLoadedNotes(load.song, load.result.shortNotes, {20}), lengthened);
    EXPECT_EQ(NotesOf(load.song.tracks[0]), loaded);
    EXPECT_EQ(song::CheckSong(load.song), "");
    // The pairs stay, and a second run finds nothing.
    const std::string pairs = PairsOf(load.song.tracks[0]);
    song::SetNoteOnOffPointers(load.song);
    EXPECT_EQ(PairsOf(load.song.tracks[0]), pairs);
    const auto again = song::FindShortNotes(load.song, 20);
    EXPECT_EQ(song::LengthenLoadedNotes(load.song, again, {20}), 0);
    EXPECT_EQ(NotesOf(load.song.tracks[0]), loaded);
}

INSTANTIATE_TEST_SUITE_P(
    All, NoteLength,
    testing::Values(
        // Behind the events at the new place.
        LengthCase{"90+60 100-60 105= 110= 111=", "90+60 105= 110= 110-60 111=",
                   "90+60 105= 110= 110-60 111=", 1},
        LengthCase{"0+60 20-60 20=", "0+60 20-60 20=", "0+60 20-60 20=", 0},
        LengthCase{"0+60 5-60 20=", "0+60 20= 20-60", "0+60 20= 20-60", 1},
        LengthCase{"0+60 5-60 99=", "0+60 20-60 99=", "0+60 20-60 99=", 1},
        // Into the next note of the pitch, which loading does not.
        LengthCase{"0+60 5-60 12+60 40-60", "0+60 12+60 20-60 40-60", "0+60 12-60 12+60 40-60", 1},
        LengthCase{"0+60 5-60 5+60 40-60", "0+60 5+60 20-60 40-60", "0+60 5-60 5+60 40-60", 0},
        LengthCase{"0+60 3+61 5-60 7-61 9+60 40-60", "0+60 3+61 9+60 20-60 23-61 40-60",
                   "0+60 3+61 9-60 9+60 23-61 40-60", 2},
        // An overlap of the file is not cut.
        LengthCase{"0+60 3+60 5-60 30-60", "0+60 3+60 20-60 30-60", "0+60 3+60 20-60 30-60", 1},
        // Doubled notes, all at one tick.
        LengthCase{"4+60 4-60 4+60 4-60 9+60 50-60", "4+60 4+60 9+60 24-60 24-60 50-60",
                   "4+60 4+60 9-60 9-60 9+60 50-60", 2},
        // No place before the song's end.
        LengthCase{"995+60 995-60 995=", "995+60 995= 1005-60", "995+60 995= 1005-60", 1},
        LengthCase{"0+60 5= 9=", "0+60 5= 9=", "0+60 5= 9=", 0}));

TEST(NoteLengths, LeaveDrumPartsAndIgnoredTracksAlone) {
    const Bytes toDrums{0x43, 0x10, 0x4C, 0x08, 0x04, 0x07, 0x02, 0xF7};
    MidiFileBuilder file;
    file.Track(TrackBuilder().Sysex(0, toDrums).Short(0, 0xB5, 0, 127).End());
    for (const int channel : {9, 4, 5, 0, 1}) {
        file.Track(TrackOf("0+60 5-60", channel));
    }
    DecodedSong decoded(file.Build(), {.minimumNoteLength = 20});
    decoded.song.tracks[5].ignored = 1;
    EXPECT_EQ(song::LengthenLoadedNotes(decoded.song, decoded.result.shortNotes, {20, true}), 1);
    EXPECT_EQ(NotesOf(decoded.song.tracks[4]), "0+60 20-60");
    EXPECT_EQ(song::CheckForZeroLength(decoded.song, {20, false}), 3);
    EXPECT_EQ(NotesOf(decoded.song.tracks[5]), "0+60 5-60");
}

struct OverlapCase {
    const char* notes;
    const char* expected;
};

class NoteOverlaps : public testing::TestWithParam<OverlapCase> {};

TEST_P(NoteOverlaps, EndWhereTheNextNoteBegins) {
    DecodedSong decoded(FileOf(GetParam().notes));
    decoded.Timed();
    song::RemoveNoteOverlaps(decoded.song);
    EXPECT_EQ(NotesOf(decoded.song.tracks[0]), GetParam().expected);
    EXPECT_EQ(song::CheckSong(decoded.song), "");
    EXPECT_EQ(song::RemoveNoteOverlaps(decoded.song), 0);
    const std::string pairs = PairsOf(decoded.song.tracks[0]);
    song::SetNoteOnOffPointers(decoded.song);
    EXPECT_EQ(PairsOf(decoded.song.tracks[0]), pairs);
}

INSTANTIATE_TEST_SUITE_P(
    All, NoteOverlaps,
    testing::Values(
        OverlapCase{"0+60 50+60 60-60 90-60", "0+60 50-60 50+60 90-60"},
        OverlapCase{"0+60 50+60 50-60 90-60", "0+60 50-60 50+60 90-60"},
        OverlapCase{"0+60 5+61 50-60 50+60 60-61 90-60", "0+60 5+61 50-60 50+60 60-61 90-60"},
        OverlapCase{"0+60 10+60 20+60 30-60 40-60 50-60", "0+60 10-60 10+60 20-60 20+60 50-60"},
        // Doubled notes end together where the third begins.
        OverlapCase{"0+60 0+60 9+60 30-60 31-60 32-60", "0+60 0+60 9-60 9-60 9+60 32-60"},
        OverlapCase{"0+60 0+60 30-60 31-60", "0+60 0+60 30-60 31-60"},
        // The later note never ends: it would sound on.
        OverlapCase{"0+60 50+60 60-60", "0+60 50+60 60-60"}));

TEST(NoteOverlaps, CanBeChosen) {
    DecodedSong decoded(FileOf("0+60 5+60 9-60 10+60 20-60 30-60"));
    EXPECT_EQ(song::RemoveNoteOverlaps(
                  decoded.song, [](const auto& overlap) { return overlap.next->tick == 10; }),
              1);
    EXPECT_EQ(NotesOf(decoded.song.tracks[0]), "0+60 5+60 9-60 10-60 10+60 30-60");
}

TEST(NoteBalance, ListsTheFaultsOfTheFirstTrackThatHasAny) {
    DecodedSong decoded(MidiFileBuilder()
                            .Track(TrackOf("0-60 480+60", 0)) // a count of 0
                            .Track(TrackOf("0+61 240+61 480-61 500-62 600-62", 11))
                            .Track(TrackOf("0+62", 1))
                            .Build());
    decoded.Timed();
    const song::BalanceReport report = song::CheckForNoteOnsNoteOffs(decoded.song);
    EXPECT_EQ(report.track, 1);
    EXPECT_EQ(song::BalanceText(decoded.song, report, Language::English),
              "Found 1 Note-Offs without Note-Ons,\nCh.12, Pos. 001.02.120, Note D3(62)\n"
              "Found 1 Note-Ons without Note-Offs,\nCh.12, Pos. 001.01.240, Note C#3(61)\n");
    decoded.song.tracks[1].ignored = 1;
    EXPECT_EQ(song::CheckForNoteOnsNoteOffs(decoded.song).track, 2);
    EXPECT_EQ(song::BalanceText(decoded.song, song::CheckForNoteOnsNoteOffs(decoded.song),
                                Language::German),
              "Es wurden 1 Note-Ons ohne Note-Offs gefunden,\nCh.02, Pos. 001.01.000, Note "
              "D3(62)\n");
    decoded.song.tracks[2].ignored = 1;
    EXPECT_TRUE(song::CheckForNoteOnsNoteOffs(decoded.song).Balanced());
}

// Notes of few pitches close together, so that everything overlaps; with `strays` also note-offs
// without a note-on.
Bytes DenseFile(Dice& dice, int format, bool strays) {
    constexpr int kDivisions[] = {1, 480, 30'000};
    MidiFileBuilder file(format, kDivisions[dice.Roll(3)]);
    for (int tracks = format == 0 ? 1 : 3; tracks > 0; --tracks) {
        TrackBuilder track;
        std::map<int, int> open;
        track.Tempo(0, 300'000 + 1000 * static_cast<std::uint32_t>(dice.Roll(500)));
        for (int i = dice.Roll(120); i >= 0; --i) {
            const auto delta = static_cast<std::uint64_t>(dice.Roll(2) * dice.Roll(12));
            const int key = 60 + dice.Roll(3);
            const int channel = dice.Roll(3);
            const int kind = dice.Roll(5);
            if (kind == 0) {
                track.Short(delta, 0xB0 | channel, 11, 5);
            } else if (kind > 2 && (strays || open[channel * 128 + key]-- > 0)) {
                track.NoteOff(delta, channel, key);
            } else {
                track.Note(delta, channel, key, 90);
                open[channel * 128 + key] = std::max(open[channel * 128 + key], 0) + 1;
            }
        }
        file.Track(track.End());
    }
    return file.Build();
}

std::vector<std::string> SortedEvents(const song::Song& song, bool withOffs) {
    std::vector<std::string> events;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (withOffs || event->Command() != song::kNoteOff) {
                events.push_back(EventText(*event));
            }
        }
    }
    return events;
}

// What pairing means, in the plainest words.
std::string PlainPairs(const song::Track& track) {
    std::map<int, std::deque<int>> open;
    std::string text;
    for (song::ConstEventLink event = track.first; event; event = event->next) {
        std::deque<int>& notes = open[event->Channel() * 128 + event->data1];
        if (event->IsNoteOn()) {
            notes.push_back(event->tick);
        } else if (event->Command() == song::kNoteOff) {
            text += notes.empty() ? "x " : std::to_string(notes.front()) + " ";
            notes.empty() ? void() : notes.pop_front();
        }
    }
    return text;
}

// The times of all events are what a walk over the whole song gives.
void ExpectTimes(song::Song& song) {
    std::vector<std::int32_t> times;
    const auto collect = [&] {
        std::vector<std::int32_t> all;
        for (const song::Track& track : song.tracks) {
            for (song::ConstEventLink event = track.first; event; event = event->next) {
                all.push_back(event->timeMs);
            }
        }
        return all;
    };
    times = collect();
    song::SetTimePositions(song);
    EXPECT_EQ(times, collect());
}

TEST(NoteChecks, LoseNothingInRandomSongs) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        const int format = dice.Roll(2);
        const bool strays = dice.Roll(2) == 0;
        const Bytes file = DenseFile(dice, format, strays);
        const int minimum = 1 + dice.Roll(40);
        DecodedSong decoded(file, {.splitFormat0 = true, .minimumNoteLength = minimum});
        decoded.Timed();
        song::Song& song = decoded.song;
        const auto others = SortedEvents(song, false);
        const std::size_t all = SortedEvents(song, true).size();
        for (const song::Track& track : song.tracks) {
            EXPECT_EQ(PairsOf(track), PlainPairs(track));
        }
        if (dice.Roll(2) == 0) {
            song::LengthenLoadedNotes(song, decoded.result.shortNotes, {minimum});
        } else {
            song::CheckForZeroLength(song, {minimum});
            for (const song::NoteEnd& end : song::FindShortNotes(song, minimum)) {
                EXPECT_EQ(end.off->tick, song.songLength); // no place behind it
            }
        }
        EXPECT_EQ(song::CheckSong(song), "");
        song::RemoveNoteOverlaps(song);
        EXPECT_EQ(song::CheckSong(song), "");
        ExpectTimes(song);
        for (const song::Track& track : song.tracks) {
            EXPECT_TRUE(song::FindNoteOverlaps(track).empty());
            // A note-off without a note-on may lie where a note has been lengthened.
            EXPECT_TRUE(strays || PairsOf(track) == PlainPairs(track));
        }
        EXPECT_EQ(SortedEvents(song, false), others);
        EXPECT_EQ(SortedEvents(song, true).size(), all);
    }
}

TEST(NoteChecks, StayLinearWhereEverythingIsAtOneTick) {
    TrackBuilder track;
    for (int i = 0; i < 60'000; ++i) {
        track.Note(0, 0, 60, 90).NoteOff(0, 0, 60);
    }
    for (int i = 0; i < 30'000; ++i) {
        track.Note(0, 0, 60, 90);
    }
    DecodedSong decoded(MidiFileBuilder().Track(track.End(3)).Build(), {.minimumNoteLength = 20});
    EXPECT_EQ(song::LengthenLoadedNotes(decoded.song, decoded.result.shortNotes, {20}), 60'000);
    EXPECT_EQ(song::CheckSong(decoded.song), "");
    EXPECT_EQ(song::RemoveNoteOverlaps(decoded.song), 0);
}

} // namespace
} // namespace tracksmith::test
