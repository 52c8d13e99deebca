#include "instruments/picker/write_voice.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <tuple>

#include "support/song_assert.h"

#include "instruments/voices/voice_fixture.h"
#include "song/song_position.h"

namespace tracksmith::instruments {
namespace {

using tracksmith::test::Bytes;
using tracksmith::test::DecodedSong;
using tracksmith::test::Dice;
using tracksmith::test::MidiFileBuilder;
using tracksmith::test::TrackBuilder;

constexpr VoiceNumbers kNew{8, 34, 5};

Bytes File(const std::vector<TrackBuilder>& tracks) {
    MidiFileBuilder file;
    for (TrackBuilder track : tracks) {
        file.Track(track.End(4000));
    }
    return file.Build();
}

struct WriteRow {
    const char* what;
    std::vector<TrackBuilder> tracks;
    std::vector<std::size_t> changes;
    /// Listings of the tracks afterwards, joined by " | ".
    std::string expected;
};

class WriteVoiceTest : public testing::TestWithParam<WriteRow> {};

TEST_P(WriteVoiceTest, RewritesInPlaceAndAddsWhatIsMissing) {
    DecodedSong decoded(File(GetParam().tracks));
    decoded.Timed();
    WriteVoice(decoded.song, 2, GetParam().changes, kNew);
    EXPECT_EQ(song::CheckSong(decoded.song), "");
    std::string listing;
    for (std::size_t track = 0; track < decoded.song.tracks.size(); ++track) {
        listing += (track == 0 ? "" : " | ") + decoded.List(track);
    }
    EXPECT_EQ(listing, GetParam().expected) << GetParam().what;
    for (const song::Track& track : decoded.song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            EXPECT_EQ(event->timeMs, song::TickToMs(decoded.song, event->tick));
        }
    }
}

TrackBuilder Track() {
    return TrackBuilder();
}

INSTANTIATE_TEST_SUITE_P(
    Program, WriteVoiceTest,
    testing::Values(
        WriteRow{"in place, also on another track",
                 {Track().Short(10, 0xB2, 0, 1), Track().Short(11, 0xB2, 32, 2).Program(9, 2, 3)},
                 {0},
                 "10 B20008 | 11 B22022; 20 C205"},
        WriteRow{"bank missing",
                 {Track().Note(0, 3, 1, 1).Program(20, 2, 3)},
                 {0},
                 "0 930101; 20 B20008; 20 B22022; 20 C205"},
        WriteRow{"MSB missing before an LSB of the same tick",
                 {Track().Short(20, 0xB2, 32, 2).Short(0, 0xB2, 7, 9).Program(0, 2, 3)},
                 {0},
                 "20 B20008; 20 B22022; 20 B20709; 20 C205"},
        WriteRow{"MSB missing, LSB at another tick",
                 {Track().Short(10, 0xB2, 32, 2).Program(10, 2, 3)},
                 {0},
                 "10 B22022; 20 B20008; 20 C205"},
        WriteRow{"of several bank selects the last counts",
                 {Track()
                      .Short(0, 0xB2, 0, 1)
                      .Short(0, 0xB2, 0, 2)
                      .Short(0, 0xB2, 32, 3)
                      .Program(0, 2, 3)},
                 {0},
                 "0 B20001; 0 B20008; 0 B22022; 0 C205"},
        WriteRow{"later places keep their voice",
                 {Track()
                      .Short(0, 0xB2, 0, 1)
                      .Short(0, 0xB2, 32, 2)
                      .Program(0, 2, 3)
                      .Program(50, 2, 4)
                      .Program(50, 2, 6)},
                 {0},
                 "0 B20008; 0 B22022; 0 C205; 50 B20001; 50 B22002; 50 C204; 100 C206"},
        WriteRow{"a later place",
                 {Track().Short(0, 0xB2, 0, 1).Program(0, 2, 3).Program(50, 2, 4)},
                 {1},
                 "0 B20001; 0 C203; 50 B20008; 50 B22022; 50 C205"},
        WriteRow{"all places at once",
                 {Track().Program(0, 2, 3).Program(50, 2, 4)},
                 {1, 0, 1, 7},
                 "0 B20008; 0 B22022; 0 C205; 50 B20008; 50 B22022; 50 C205"},
        WriteRow{
            "the voice in force adds nothing",
            {Track().Short(0, 0xB2, 0, 8).Short(0, 0xB2, 32, 34).Program(0, 2, 4).Program(9, 2, 5)},
            {1},
            "0 B20008; 0 B22022; 0 C204; 9 C205"},
        WriteRow{"no such place", {Track().Program(0, 2, 3)}, {1}, "0 C203"},
        WriteRow{"other channels stay",
                 {Track().Program(0, 1, 3).Short(0, 0xB1, 0, 1).Program(5, 2, 4)},
                 {0},
                 "0 C103; 0 B10001; 5 B20008; 5 B22022; 5 C205"}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

// 480 ticks are 500 ms.
INSTANTIATE_TEST_SUITE_P(
    NoProgram, WriteVoiceTest,
    testing::Values(
        WriteRow{"at the start",
                 {Track(), Track().Short(0, 0xB2, 7, 9).Note(480, 2, 60, 1)},
                 {},
                 " | 0 B20709; 0 B20008; 0 B22022; 0 C205; 480 923C01"},
        WriteRow{"behind set-up and its pause",
                 {Track().Sysex(4, {0x7E, 0xF7}), Track().Note(480, 2, 60, 1)},
                 {},
                 "4 F0 7EF7 | 52 B20008; 52 B22022; 52 C205; 480 923C01"},
        WriteRow{"no room",
                 {Track().Sysex(4, {0x7E, 0xF7}), Track().Note(0, 3, 1, 1).Note(52, 2, 60, 1)},
                 {0},
                 "4 F0 7EF7 | 0 930101; 52 B20008; 52 B22022; 52 C205; 52 923C01"},
        WriteRow{"other notes before the set-up",
                 {Track().Note(0, 3, 1, 1).Sysex(300, {0x7E, 0xF7}).Sysex(300, {0x7E, 0xF7}),
                  Track().Note(480, 2, 60, 1)},
                 {},
                 "0 930101; 300 F0 7EF7; 600 F0 7EF7 | "
                 "348 B20008; 348 B22022; 348 C205; 480 923C01"},
        WriteRow{"the track that plays first",
                 {Track().Note(300, 2, 60, 1), Track().Short(0, 0xB2, 7, 9).Note(200, 2, 60, 1)},
                 {},
                 "300 923C01 | 0 B20709; 0 B20008; 0 B22022; 0 C205; 200 923C01"},
        WriteRow{"no note",
                 {Track().Sysex(2, {0x7E, 0xF7}).Sysex(3900, {0x7E, 0xF7}),
                  Track().Note(0, 3, 1, 1), Track().Short(90, 0xB2, 7, 9)},
                 {},
                 "2 F0 7EF7; 3902 F0 7EF7 | 0 930101 | 50 B20008; 50 B22022; 50 C205; 90 B20709"},
        WriteRow{"banks without program",
                 {Track().Short(0, 0xB2, 0, 1).Note(480, 2, 60, 1)},
                 {},
                 "0 B20001; 0 B20008; 0 B22022; 0 C205; 480 923C01"},
        WriteRow{"nothing of the channel", {Track().Note(0, 3, 1, 1)}, {}, "0 930101"}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(WriteVoice, MendsLengthsAndPassesOverWhatDoesNotCount) {
    DecodedSong decoded(File({Track().Program(0, 2, 9),
                              Track().Short(0, 0xB2, 0, 1).Short(0, 0xB2, 32, 1).Program(0, 2, 3),
                              Track().Program(3, 2, 9)}));
    decoded.Timed();
    decoded.song.tracks[0].ignored = 1;
    decoded.song.tracks[1].first->next->length = 2;
    decoded.song.tracks[2].first->next->length = 0; // removed
    EXPECT_EQ(SongPatches(decoded.song).Changes(2).size(), 1U);
    WriteVoice(decoded.song, 2, std::vector<std::size_t>{0}, kNew);
    EXPECT_EQ(decoded.List(0), "0 C209");
    EXPECT_EQ(decoded.List(1), "0 B20008; 0 B22022; 0 C205");
    decoded.song.tracks[1].ignored = 1;
    WriteVoice(decoded.song, 2, {}, kNew);
    EXPECT_EQ(decoded.song.tracks[2].eventCount, 3);
}

TEST(SongPatches, TellsWhatIsInForceWhere) {
    DecodedSong decoded(File({Track().Short(5, 0xB2, 0, 1).Program(5, 2, 3).Program(90, 2, 4)}));
    StartBanks start{};
    start[2] = {127, 7, 0};
    start[9] = {120, 1, 0};
    const SongPatches patches(decoded.song, start);
    EXPECT_EQ(patches.StateAt(2, 0).Numbers(), (VoiceNumbers{1, 7, 3}));
    EXPECT_EQ(patches.StateAt(2, 99).program, 3);
    EXPECT_EQ(patches.StateAt(2, 100).program, 4);
    EXPECT_EQ(patches.StateAt(2, 100).bankMsbEvent, song::EventLink());
    EXPECT_EQ(patches.StateAt(2, 0).bankMsbEvent->tick, 5);
    EXPECT_EQ(patches.StateAt(9, 50).Numbers(), (VoiceNumbers{120, 1, 0}));
    EXPECT_FALSE(patches.StateAt(9, 50).programEvent);
    EXPECT_EQ(SongPatches().ChangeAt(0, 5), 0U);
}

/// What each program change of channel 0 selects, by a plain walk over all events.
std::vector<VoiceNumbers> Selected(const song::Song& song) {
    std::vector<std::tuple<std::int32_t, std::size_t, song::ConstEventLink>> events;
    for (std::size_t track = 0; track < song.tracks.size(); ++track) {
        for (song::ConstEventLink event = song.tracks[track].first; event; event = event->next) {
            events.emplace_back(event->tick, track, event);
        }
    }
    std::ranges::stable_sort(events, {}, [](const auto& each) {
        return std::pair(std::get<0>(each), std::get<1>(each));
    });
    std::vector<VoiceNumbers> selected;
    VoiceNumbers now;
    for (const auto& [tick, track, event] : events) {
        if (event->status == 0xB0 && event->data1 == 0) {
            now.msb = event->data2;
        } else if (event->status == 0xB0 && event->data1 == 32) {
            now.lsb = event->data2;
        } else if (event->status == 0xC0) {
            now.program = event->data1;
            selected.push_back(now);
        }
    }
    return selected;
}

Bytes RandomVoices(Dice& dice) {
    std::vector<TrackBuilder> tracks(3);
    for (TrackBuilder& track : tracks) {
        for (int i = dice.Roll(8); i > 0; --i) {
            const auto delta = static_cast<std::uint64_t>(dice.Roll(3));
            switch (dice.Roll(4)) {
                case 0:
                    track.Short(delta, 0xB0 | dice.Roll(2), 0, dice.Roll(3));
                    break;
                case 1:
                    track.Short(delta, 0xB0 | dice.Roll(2), 32, dice.Roll(3));
                    break;
                case 2:
                    track.Program(delta, dice.Roll(2), dice.Roll(3));
                    break;
                default:
                    track.Note(delta, dice.Roll(2), 60, 1);
            }
        }
    }
    return File(tracks);
}

// Whatever the song and the places: those are changed and no other.
TEST(WriteVoice, ChangesTheChosenPlacesAlone) {
    Dice dice(7);
    for (int round = 0; round < 400; ++round) {
        DecodedSong decoded(RandomVoices(dice));
        decoded.Timed();
        std::vector<VoiceNumbers> expected = Selected(decoded.song);
        const SongPatches patches(decoded.song);
        ASSERT_EQ(patches.Changes(0).size(), expected.size());
        std::vector<std::size_t> chosen;
        const VoiceNumbers numbers{static_cast<std::uint8_t>(dice.Roll(3)),
                                   static_cast<std::uint8_t>(dice.Roll(3)),
                                   static_cast<std::uint8_t>(dice.Roll(3))};
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(patches.Changes(0)[i].state.Numbers(), expected[i]);
            if (dice.Roll(2) == 0) {
                chosen.push_back(i);
                expected[i] = numbers;
            }
        }
        const bool none = expected.empty();
        WriteVoice(decoded.song, 0, chosen, numbers);
        ASSERT_EQ(song::CheckSong(decoded.song), "");
        const std::vector<VoiceNumbers> selected = Selected(decoded.song);
        ASSERT_EQ(selected, none && !selected.empty() ? std::vector{numbers} : expected) << round;
    }
}

} // namespace
} // namespace tracksmith::instruments
