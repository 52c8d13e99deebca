#include "player_fixture.h"

#include "song/event_chain.h"

namespace tracksmith::test {
namespace {

using SeekTest = PlayerFixture;

struct ChaseCase {
    const char* name;
    TrackBuilder events; // up to 1000 ms
    const char* sent;
};

class ChaseTest : public PlayerFixture, public ::testing::WithParamInterface<ChaseCase> {};

// What Play at 1000 ms sends before the events from there on.
TEST_P(ChaseTest, SendsWhatTheEventsBeforeHaveSet) {
    TrackBuilder track = GetParam().events;
    Load(MillisecondFile().Track(track.Note(2000, 0, 60, 64).NoteOff(100, 0, 60).End()));
    EXPECT_TRUE(player->MoveToTimePosition(1000));
    EXPECT_EQ(Messages(), "");
    Play();
    Run(100);
    EXPECT_EQ(Messages(), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(
    Chases, ChaseTest,
    ::testing::Values(ChaseCase{"Nothing", TrackBuilder(), ""},
                      ChaseCase{"BankOfTheProgramThenTheLaterOne",
                                TrackBuilder()
                                    .Short(0, 0xB0, 0, 8)
                                    .Short(0, 0xB0, 32, 1)
                                    .Program(1, 0, 30)
                                    .Short(1, 0xB0, 0, 9),
                                "B00008 B02001 C01E B00009 B02001"},
                      ChaseCase{"LastValuesInFixedOrder",
                                TrackBuilder()
                                    .Raw(0, {0xD0, 5})
                                    .Short(0, 0xE0, 1, 70)
                                    .Short(0, 0xB0, 10, 20)
                                    .Short(0, 0xB0, 7, 100)
                                    .Program(1, 0, 3)
                                    .Short(9, 0xB0, 7, 90),
                                "C003 B0075A B00A14 E00146 D005"},
                      ChaseCase{"ModeMessagesAreLeftOut",
                                TrackBuilder().Short(0, 0xB0, 123, 0).Short(0, 0xB0, 126, 1), ""},
                      ChaseCase{
                          "ParametersInTheirOrder",
                          TrackBuilder()
                              .Short(0, 0xB1, 101, 0)
                              .Short(0, 0xB1, 100, 0)
                              .Short(0, 0xB1, 6, 12)
                              .Short(1, 0xB1, 99, 1)
                              .Short(0, 0xB1, 98, 32)
                              .Short(0, 0xB1, 6, 70)
                              .Short(1, 0xB1, 101, 0)
                              .Short(0, 0xB1, 100, 1)
                              .Short(0, 0xB1, 6, 64)
                              .Short(0, 0xB1, 38, 3)
                              .Short(0, 0xB1, 101, 127)
                              .Short(0, 0xB1, 100, 127),
                          "B16500 B16400 B1060C B16301 B16220 B10646 B16500 B16401 B10640 B12603 "
                          "B1657F B1647F"},
                      ChaseCase{"ResetControllers",
                                TrackBuilder()
                                    .Short(0, 0xB0, 7, 100)
                                    .Short(0, 0xB0, 11, 50)
                                    .Short(0, 0xB0, 64, 127)
                                    .Short(0, 0xB0, 84, 60)
                                    .Short(0, 0xB0, 101, 0)
                                    .Short(0, 0xB0, 100, 0)
                                    .Short(0, 0xB0, 6, 12)
                                    .Short(0, 0xE0, 1, 100)
                                    .Raw(0, {0xD0, 9})
                                    .Short(1, 0xB0, 121, 0)
                                    .Short(0, 0xB0, 6, 3),
                                "B00764 B00B7F B04000 B06500 B06400 B0060C B0657F B0647F E00040 "
                                "D000"},
                      ChaseCase{"SetUpBeforeTheFirstNote",
                                TrackBuilder()
                                    .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                                    .Sysex(10, {0x43, 0xF7})
                                    .Program(0, 0, 1)
                                    .Note(10, 0, 50, 1)
                                    .NoteOff(10, 0, 50)
                                    .Sysex(10, {0x44, 0xF7}),
                                "F07E7F0901F7 F043F7 C001"}),
    [](const auto& chase) { return chase.param.name; });

// The music waits as long as the instrument needs; a seek does not repeat what it has had.
TEST_F(SeekTest, SetUpMessagesAreChasedWithPauses) {
    for (const int messages : {2, 6}) {
        TrackBuilder track;
        track.Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7}).Sysex(20, {1, 0xF7});
        for (int i = 2; i < messages; ++i) {
            track.Sysex(100, {2, 0xF7});
        }
        Load(MillisecondFile().Track(track.Sysex(100, {3, 0xF7})
                                         .Program(5, 0, 1)
                                         .Note(2000, 0, 60, 64)
                                         .NoteOff(9, 0, 60)
                                         .End(500)));
        EXPECT_TRUE(player->MoveToTimePosition(1000));
        Play();
        EXPECT_EQ(Messages(), "F07E7F0901F7");
        if (messages == 6) {
            Run(200);
            EXPECT_EQ(Log(), "50 F001F7; 110 F002F7; 170 F002F7");
            EXPECT_EQ(host.messages, std::vector<std::string>{"preparing the instrument"});
            EXPECT_EQ(player->Position(), 1000);
            continue;
        }
        Run(200);
        EXPECT_EQ(Log(), "50 F001F7; 110 F003F7; 115 C001");
        EXPECT_TRUE(host.messages.empty());
        EXPECT_EQ(player->Position(), 1085);
        EXPECT_TRUE(player->MoveToTimePosition(2100));
        Run(100);
        EXPECT_EQ(Log(), "200 silence; 200 C001; 225 903C40; 234 803C40");
        player->FormDestroy();
        driver.clock = [] { return 0; };
    }
}

// The same channel in two tracks: what is played later counts, not the later track.
TEST_F(SeekTest, ChasesInTheOrderOfPlaying) {
    Load(MillisecondFile()
             .Track(TrackBuilder().Short(20, 0xB0, 7, 90).End())
             .Track(TrackBuilder().Short(10, 0xB0, 7, 80).End(500)));
    EXPECT_TRUE(player->MoveToTimePosition(100));
    Play();
    EXPECT_EQ(Messages(), "B0075A");
}

TEST_F(SeekTest, MutedTracksAreNotChasedButFollow) {
    Load(MillisecondFile()
             .Track(TrackBuilder().Short(20, 0xB0, 7, 90).Note(200, 0, 60, 64).End())
             .Track(TrackBuilder().Program(10, 0, 8).NoteOff(300, 0, 60).End(500)));
    EXPECT_TRUE(player->SetTrackMuted(0, true));
    EXPECT_TRUE(player->MoveToTimePosition(100));
    Play();
    Run(50);
    EXPECT_TRUE(player->SetTrackMuted(0, false));
    Run(250);
    EXPECT_EQ(Log(), "0 C008; 120 B0075A; 120 903C40; 210 803C40");
}

TEST_F(SeekTest, GuardsAgainstTheSamePlaceAndBehindTheEnd) {
    Load(MillisecondFile().Track(TrackBuilder().Note(0, 0, 60, 64).NoteOff(5000, 0, 60).End()));
    Play();
    Run(1000);
    Log();
    EXPECT_TRUE(player->MoveToTimePosition(1000));
    EXPECT_TRUE(player->MoveToTimePosition(player->SongEndTime() + 1));
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(player->Position(), 1000);
    EXPECT_TRUE(player->MoveToTimePosition(-5));
    Run(0);
    EXPECT_EQ(player->Position(), 0);
    EXPECT_EQ(Log(), "1000 silence; 1000 903C40");
    EXPECT_TRUE(player->MoveToTimePosition(4990));
    Run(10);
    EXPECT_EQ(Log(), "1000 silence; 1010 803C40");
}

TEST_F(SeekTest, MixerFindsTheControllerInEffect) {
    Load(MillisecondFile().Track(TrackBuilder()
                                     .Short(0, 0xB3, 7, 1)
                                     .Program(0, 3, 5)
                                     .Short(500, 0xB3, 7, 2)
                                     .Short(500, 0xB3, 7, 3)
                                     .Program(0, 3, 9)
                                     .Short(0, 0xE3, 0, 80)
                                     .End()));
    const auto inEffect = [&] {
        const song::EventLink event = player->InEffect().Controller(3, 7).event;
        return event ? event->data2 : 0;
    };
    EXPECT_EQ(inEffect(), 0);
    EXPECT_TRUE(player->MoveToTimePosition(600));
    EXPECT_EQ(inEffect(), 2);
    EXPECT_EQ(player->InEffect().Program(3).value, 5);
    Play();
    Run(400);
    EXPECT_EQ(inEffect(), 3);
    EXPECT_EQ(player->InEffect().Program(3).value, 9);
    EXPECT_NE(player->InEffect().Bend(3).value, song::kUnset);
}

// An edit frees events that cursors point to; the position stays.
TEST_F(SeekTest, RebuildAfterEditFindsEverythingAgain) {
    Load(MillisecondFile().Track(
        TrackBuilder().Note(10, 0, 60, 64).NoteOff(500, 0, 60).Note(500, 0, 61, 64).End(200)));
    EXPECT_TRUE(player->SetLoop(510, 1100));
    Play();
    Run(100);
    Stop();
    song::Track& track = decoded->song.tracks[0];
    while (track.first->next != track.last) {
        song::RemoveEvent(decoded->song, track, track.first->next);
    }
    song::InsertByTick(track, song::NewShortEvent(decoded->song.pool, 150, 0x90, 70, 64));
    song::InsertByTick(track, song::NewShortEvent(decoded->song.pool, 160, 0x80, 70, 64));
    song::UpdateTimeZoneData(decoded->song);
    Log();
    EXPECT_TRUE(player->RebuildAfterEdit());
    EXPECT_EQ(player->Position(), 100);
    Play();
    Run(100);
    EXPECT_EQ(Log(), "150 904640; 160 804640");
}

// Its reset and settings go out at each exchange, and neither song keeps anything of the other.
TEST_F(SeekTest, AnotherSongIsPlayedForAWhile) {
    const auto melody = [](std::uint8_t key, std::uint8_t volume, int count) {
        TrackBuilder track;
        track.Tempo(0, 500'000)
            .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
            .Short(300, 0xB0, 7, volume);
        for (int i = 0; i < count; ++i) {
            track.Note(i == 0 ? 700 : 900, 0, key, 64).NoteOff(100, 0, key);
        }
        return MillisecondFile().Track(track.End()).Build();
    };
    Load(melody(60, 90, 5));
    DecodedSong other(melody(72, 50, 2));
    other.Timed();
    const std::string own = decoded->List(0);
    const std::string others = other.List(0);
    EXPECT_TRUE(player->MoveToTimePosition(900));
    Play();
    Run(1150); // the second note has just begun
    Messages();
    ASSERT_TRUE(player->PlaySong(&other.song, {950, 0, 0, {}}));
    Run(1000);
    const std::string heard = Messages();
    EXPECT_NE(heard.find("F07E7F0901F7"), std::string::npos) << heard;
    EXPECT_NE(heard.find("B00732"), std::string::npos) << heard;
    EXPECT_NE(heard.find("904840"), std::string::npos) << heard;
    EXPECT_EQ(heard.find("903C40"), std::string::npos) << heard;
    EXPECT_EQ(player->SongEndTime(), 2'110);
    EXPECT_TRUE(player->SetTempoOffset(120));
    EXPECT_EQ(player->SongEndTime(), 1'055);
    ASSERT_TRUE(player->PlaySong(nullptr, {2'950, 2'000, 3'000, {}}));
    EXPECT_EQ(other.List(0), others); // tempo and times, too
    EXPECT_EQ(player->Loop().endMs, 1'500);
    Run(1000);
    EXPECT_NE(Messages().find("903C40"), std::string::npos);
    EXPECT_EQ(player->SongEndTime(), 2'555);
    EXPECT_TRUE(player->SetTempoOffset(0));
    EXPECT_EQ(decoded->List(0), own);
    DecodedSong bare(MillisecondFile().Track(TrackBuilder().End(900)).Build());
    bare.Timed();
    const song::EventLink reset =
        song::NewSysexEvent(bare.song.pool, 0, Bytes{0x7E, 0x7F, 0x09, 0x01, 0xF7});
    ASSERT_TRUE(player->PlaySong(&bare.song, {100, 0, 0, reset}));
    EXPECT_NE(Messages().find("F07E7F0901F7"), std::string::npos);
    ASSERT_TRUE(player->PlaySong(nullptr, {0, 0, 0, {}}));
    ASSERT_TRUE(player->PlaySong(&other.song, {0, 0, 0, {}}));
    player->FormDestroy(); // while the other song is still heard
}

} // namespace
} // namespace tracksmith::test
