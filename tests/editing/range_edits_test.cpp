#include "editing/range_edits.h"

#include <tuple>
#include <utility>

#include "support/instrument_model_notes.h"
#include "support/song_assert.h"

#include "editing/random_music.h"
#include "song/song_position.h"

namespace tracksmith::editing {
namespace {

using namespace test;

// Measures of 400 ticks.
constexpr int kDivision = 100;

/// What the range from 400 to 800 becomes when it is cut, or copied to 1,200.
struct SeamCase {
    const char* name;
    TrackBuilder track;
    const char* cut;
    const char* copied;
};

// NOLINTNEXTLINE(readability-function-size): a table
std::vector<SeamCase> SeamCases() {
    return {
        {"a note sounds into the range, one out of it",
         TrackBuilder()
             .Note(100, 0, 60, 90)
             .Note(320, 0, 62, 91)
             .NoteOff(30, 0, 60)
             .NoteOff(450, 0, 62),
         "100 903C5A; 399 803C5A; 400 903E5B; 500 803E40",
         "100 903C5A; 420 903E5B; 450 803C40; 900 803E40; 1200 903C5A; 1220 903E5B; 1250 803C40; "
         "1599 803E5B"},
        {"a note is held through", TrackBuilder().Note(100, 0, 60, 90).NoteOff(1'300, 0, 60),
         "100 903C5A; 399 803C5A; 400 903C5A; 1000 803C40",
         "100 903C5A; 1199 803C5A; 1200 903C5A; 1599 803C5A; 1600 903C5A; 1800 803C40"},
        {"notes end exactly at the edges",
         TrackBuilder()
             .Note(100, 0, 60, 90)
             .NoteOff(300, 0, 60)
             .Note(100, 0, 62, 90)
             .NoteOff(300, 0, 62)
             .Note(300, 0, 64, 90)
             .NoteOff(100, 0, 64)
             .Note(0, 0, 64, 80)
             .NoteOff(9, 0, 64),
         "100 903C5A; 399 803C5A; 700 90405A; 800 804040; 800 904050; 809 804040",
         "100 903C5A; 400 803C40; 500 903E5A; 800 803E40; 1100 90405A; 1199 80405A; 1300 903E5A; "
         "1599 803E5A; 1600 904050; 1609 804040"},
        {"two notes of a pitch are open",
         TrackBuilder()
             .Note(398, 0, 60, 90)
             .Note(1, 0, 60, 91)
             .NoteOff(101, 0, 60)
             .NoteOff(100, 0, 60),
         "398 903C5A; 398 803C5A; 399 903C5B; 399 803C5B",
         "398 903C5A; 399 903C5B; 500 803C40; 600 803C40; 1200 903C5A; 1200 903C5B; 1300 803C40; "
         "1400 803C40"},
        {"a note never ends, and one never began",
         TrackBuilder().Note(100, 0, 60, 90).NoteOff(400, 0, 61).Short(800, 0xB0, 7, 9),
         "100 903C5A; 399 803C5A; 400 903C5A; 900 B00709",
         "100 903C5A; 500 803D40; 1199 803C5A; 1200 903C5A; 1599 803C5A; 1600 903C5A; 1700 B00709"},
        {"settings of the range",
         TrackBuilder()
             .Short(0, 0xB0, 7, 100)
             .Short(500, 0xB0, 0, 8)
             .Program(0, 0, 5)
             .Short(0, 0xB0, 0, 9)
             .Short(0, 0xB0, 7, 80)
             .Short(0, 0xE0, 0, 70)
             .Short(0, 0xB0, 11, 33)
             .Raw(0, {0xD0, 7})
             .Short(300, 0xB0, 11, 50)
             .Note(2, 0, 60, 90)
             .NoteOff(600, 0, 60),
         "0 B00764; 400 B00008; 400 C005; 400 B00009; 400 B00B32; 401 B00750; 401 E00046; 401 D007; "
         "402 903C5A; 1002 803C40",
         nullptr},
        {"a reset in the range",
         TrackBuilder()
             .Short(0, 0xB0, 7, 50)
             .Sysex(500, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
             .Short(50, 0xB0, 10, 20)
             .Note(400, 0, 60, 90)
             .NoteOff(100, 0, 60),
         "0 B00732; 401 B00764; 401 B00A14; 550 903C5A; 650 803C40", nullptr},
        {"parameters as whole sequences",
         TrackBuilder()
             .Short(0, 0xB0, 101, 0)
             .Short(0, 0xB0, 100, 0)
             .Short(0, 0xB0, 6, 2)
             .Short(500, 0xB0, 6, 12)
             .Short(0, 0xB0, 101, 127)
             .Short(0, 0xB0, 100, 127)
             .Note(400, 0, 60, 90)
             .NoteOff(100, 0, 60),
         "0 B06500; 0 B06400; 0 B00602; 401 B06500; 401 B06400; 401 B0060C; 401 B0657F; 401 B0647F; "
         "500 903C5A; 600 803C40",
         nullptr},
    };
}

Bytes FileOf(TrackBuilder track) {
    return MidiFileBuilder(1, kDivision)
        .Track(TrackBuilder().Tempo(0, 500'000).End())
        .Track(track.End())
        .Build();
}

TEST(RangeEditsTest, SeamsCloseAndReopenNotesAndCarrySettings) {
    for (const SeamCase& each : SeamCases()) {
        SCOPED_TRACE(each.name);
        DecodedSong cut(FileOf(each.track));
        cut.Timed();
        DeleteRange(cut.song, {400, 800, 0});
        EXPECT_EQ(cut.Timed().List(1), each.cut);
        if (each.copied != nullptr) {
            DecodedSong copied(FileOf(each.track));
            copied.Timed();
            CopyRange(copied.song, {400, 800, 1200}, true);
            EXPECT_EQ(copied.Timed().List(1), each.copied);
        }
    }
}

TEST(RangeEditsTest, TempoMetreKeyAndLengthGoAlong) {
    const Bytes file = MidiFileBuilder(1, kDivision)
                           .Track(TrackBuilder()
                                      .Tempo(0, 500'000)
                                      .Tempo(450, 400'000)
                                      .TimeSignature(0, 3, 2)
                                      .Meta(0, 0x59, {2, 0})
                                      .Text(750, 6, "end")
                                      .End())
                           .Track(TrackBuilder().Note(1'199, 1, 60, 90).NoteOff(200, 1, 60).End())
                           .Build();
    DecodedSong cut(file);
    cut.Timed();
    DeleteRange(cut.song, {400, 800, 0});
    EXPECT_EQ(cut.Timed().List(0),
              "0 FF51 07A120; 400 FF51 061A80; 400 FF58 03021808; 400 FF59 0200; "
              "800 FF06 656E64");
    EXPECT_EQ(cut.song.songLength, 1'009);
    EXPECT_EQ(cut.song.keySignatures[0].back().tick, 400);

    DecodedSong copied(file);
    copied.Timed();
    CopyRange(copied.song, {400, 800, 1'200}, true);
    EXPECT_EQ(copied.Timed().List(0),
              "0 FF51 07A120; 450 FF51 061A80; 450 FF58 03021808; 450 FF59 0200; "
              "1200 FF51 07A120; 1200 FF58 04021808; 1200 FF59 0000; 1250 FF51 061A80; "
              "1250 FF58 03021808; 1250 FF59 0200; 1600 FF06 656E64");
    EXPECT_EQ(copied.song.songLength, 1'809);
    EXPECT_EQ(song::TickToMs(copied.song, 1'809) - song::TickToMs(copied.song, 1'250), 2'236);

    DecodedSong inside(file); // into the source itself, and to the song's start
    inside.Timed();
    CopyRange(inside.song, {400, 800, 600}, false);
    EXPECT_EQ(inside.Timed().List(0),
              "0 FF51 07A120; 450 FF51 061A80; 450 FF58 03021808; "
              "450 FF59 0200; 650 FF51 061A80; 650 FF58 03021808; "
              "650 FF59 0200; 1600 FF06 656E64");
    CopyRange(inside.song, {450, 500, 0}, false);
    EXPECT_EQ(inside.Timed().List(0).substr(0, 48),
              "0 FF51 07A120; 0 FF51 061A80; 0 FF58 03021808; 0");
}

TEST(RangeEditsTest, OnlyEmptyLeadInMayBeCut) {
    DecodedSong song(
        FileOf(TrackBuilder().Short(500, 0xB0, 7, 9).Note(1'500, 0, 60, 90).NoteOff(9, 0, 60)));
    struct Case {
        TickRange range;
        bool allowed;
    };
    for (const Case& each :
         {Case{{501, 1'999, 0}, true}, Case{{400, 1'000, 0}, false}, Case{{800, 2'000, 0}, false},
          Case{{1'999, 2'500, 0}, false}, Case{{2'000, 2'500, 0}, true}}) {
        EXPECT_EQ(MayDelete(song.song, each.range), each.allowed) << each.range.start;
    }
}

struct HeardNote {
    PlayedNote note;
    song::TimeZoneEntry zone;
};

// The notes between two ticks with all that they meet, `moved` ticks later.
std::vector<HeardNote> Heard(const song::Song& song, std::int32_t from, std::int32_t to,
                             std::int32_t moved) {
    std::vector<HeardNote> heard;
    for (PlayedNote& note : PlayedNotes(song, InstrumentModel(DrumRule::Fixed))) {
        if (note.tick >= from && note.tick < to) {
            const auto zone = song.timeZones[song::ZoneOfTick(song, note.tick)];
            note.tick += moved;
            heard.push_back({note, zone});
        }
    }
    return heard;
}

void ExpectSame(const std::vector<HeardNote>& before, const std::vector<HeardNote>& after) {
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto& [note, zone] = before[i];
        const auto& [same, sameZone] = after[i];
        ASSERT_EQ(std::tie(note.tick, note.channel, note.key, note.velocity),
                  std::tie(same.tick, same.channel, same.key, same.velocity));
        ASSERT_EQ(Differences(note.state, same.state), "") << "at " << note.tick;
        ASSERT_EQ(std::tie(zone.tempo, zone.numerator, zone.denominator),
                  std::tie(sameZone.tempo, sameZone.numerator, sameZone.denominator));
    }
}

std::vector<int> Balances(const song::Song& song) {
    std::vector<int> balances;
    for (const song::Track& track : song.tracks) {
        int& balance = balances.emplace_back();
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            balance += event->IsNoteOn() ? 1 : event->Command() == song::kNoteOff ? -1 : 0;
        }
    }
    return balances;
}

TEST(RangeEditsTest, EveryNoteMeetsWhatItMetBefore) {
    for (unsigned seed = 1; seed <= 120; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        const Bytes file = RandomMusic(dice);
        DecodedSong before(file);
        before.Timed();
        const std::int32_t length = before.song.songLength;
        const std::int32_t start = 1 + dice.Roll(length - 4);
        const std::int32_t end = start + 1 + dice.Roll(length - start - 1);
        const std::int32_t destination = 1 + dice.Roll(length - 1);
        const std::int32_t ticks = end - start;
        constexpr std::int32_t kEnd = 1 << 30;

        DecodedSong cut(file);
        cut.Timed();
        DeleteRange(cut.song, {start, end, 0});
        cut.Timed();
        ExpectSame(Heard(before.song, 0, start, 0), Heard(cut.song, 0, start, 0));
        ExpectSame(Heard(before.song, end + 2, kEnd, -ticks), Heard(cut.song, start + 2, kEnd, 0));
        EXPECT_EQ(Balances(before.song), Balances(cut.song));

        DecodedSong copied(file);
        copied.Timed();
        CopyRange(copied.song, {start, end, destination}, true);
        copied.Timed();
        const std::int32_t behind = destination + ticks;
        ExpectSame(Heard(before.song, 0, destination, 0), Heard(copied.song, 0, destination, 0));
        ExpectSame(Heard(before.song, start + 1, end, destination - start),
                   Heard(copied.song, destination + 1, behind, 0));
        ExpectSame(Heard(before.song, destination + 1, kEnd, ticks),
                   Heard(copied.song, behind + 1, kEnd, 0));
        EXPECT_EQ(Balances(before.song), Balances(copied.song));
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(RangeEditsTest, AnySongStaysWhole) {
    for (unsigned seed = 1; seed <= 80; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        DecodedSong song(RandomFile(seed, static_cast<int>(seed % 2), true));
        song.Timed();
        for (int edits = 0; edits < 4; ++edits) {
            const std::int32_t length = song.song.songLength;
            const std::int32_t start = 1 + dice.Roll(length - 3);
            const std::int32_t end = start + 1 + dice.Roll(length - start - 1);
            const TickRange range{start, end, dice.Roll(2) * dice.Roll(length)};
            dice.Roll(2) == 0 ? DeleteRange(song.song, range)
                              : CopyRange(song.song, range, dice.Roll(2) == 0);
            song.Timed();
        }
    }
}

} // namespace
} // namespace tracksmith::editing
