#include "player_fixture.h"

namespace tracksmith::test {
namespace {

using ChannelTest = PlayerFixture;

MidiFileBuilder TwoChannels() {
    return MillisecondFile()
        .Track(TrackBuilder().Note(100, 0, 60, 64).NoteOff(300, 0, 60).Note(300, 0, 62, 64).End(99))
        .Track(
            TrackBuilder().Note(100, 1, 70, 64).NoteOff(300, 1, 70).Note(300, 1, 72, 64).End(99));
}

TEST_F(ChannelTest, MutingEndsNotesAndUnmutingSendsNoBurst) {
    Load(TwoChannels());
    Play();
    Run(200);
    EXPECT_EQ(player->Activity().Sounding(1, 70), 1U);
    EXPECT_EQ(player->Activity().Level(1), 64U);
    player->SetChannelMuted(1, true);
    EXPECT_EQ(player->Activity().Sounding(1, 70), 0U);
    EXPECT_EQ(player->Activity().Level(1), 0U);
    Run(300);
    player->SetChannelMuted(1, false);
    Run(250);
    EXPECT_EQ(Log(),
              "100 903C40; 100 914640; 200 B17800; 200 B17B00; 400 803C40; 700 903E40; 700 914840");
}

TEST_F(ChannelTest, SoloSilencesTheOthers) {
    Load(TwoChannels());
    player->SetChannelSolo(1, true);
    Log();
    Play();
    Run(200);
    player->SetChannelSolo(0, true);
    player->SetChannelSolo(1, false);
    Run(600);
    EXPECT_EQ(Log(), "100 914640; 200 B17800; 200 B17B00; 400 803C40; 700 903E40");
}

TEST_F(ChannelTest, MutingATrackEndsJustItsNotes) {
    Load(MillisecondFile()
             .Track(TrackBuilder()
                        .Note(0, 0, 60, 64)
                        .Note(0, 0, 62, 64)
                        .Short(10, 0xB0, 60, 1) // a number that is also a key
                        .NoteOff(40, 0, 62)
                        .NoteOff(450, 0, 60)
                        .Note(0, 0, 61, 64)
                        .Short(0, 0xB0, 7, 99)
                        .Note(200, 0, 63, 64)
                        .End(99))
             .Track(TrackBuilder().Note(0, 0, 64, 64).NoteOff(500, 0, 64).End()));
    Play();
    Run(100);
    EXPECT_TRUE(player->SetTrackMuted(0, true));
    Run(500);
    EXPECT_TRUE(player->SetTrackMuted(0, false));
    Run(200);
    EXPECT_EQ(Log(),
              "0 903C40; 0 903E40; 0 904040; 10 B03C01; 50 803E40; 100 803C40; 500 804040; "
              "700 B00763; 700 903F40");
}

// Set behind the player's back, the flag still lets notes end.
TEST_F(ChannelTest, NotesOfATrackMutedMeanwhileEnd) {
    Load(TwoChannels());
    Play();
    Run(200);
    decoded->song.tracks[0].muted = 1;
    Run(600);
    EXPECT_EQ(Log(), "100 903C40; 100 914640; 400 803C40; 400 814640; 700 914840");
}

TEST_F(ChannelTest, RoutesToChannelsAndPorts) {
    driver.Add("Module");
    Load(TwoChannels());
    Route(0, 0, 9);
    Route(1, 1, 1);
    Log();
    Play();
    Run(200);
    Route(1, 0, 5);
    Run(600);
    std::vector<std::string> module;
    for (const Received& message : log) {
        if (message.device == "Module") {
            module.push_back(Hex(message.bytes));
        }
    }
    EXPECT_EQ(module, (std::vector<std::string>{"914640", "B17800", "B17B00"}));
    EXPECT_EQ(Log(),
              "100 993C40; 100 914640; 200 B17800; 200 B17B00; 400 893C40; 400 854640; "
              "700 993E40; 700 954840");
}

TEST_F(ChannelTest, DrumEditorMovesAndSuppressesNotes) {
    Load(MillisecondFile().Track(TrackBuilder()
                                     .Note(10, 9, 36, 64)
                                     .Note(0, 9, 38, 64)
                                     .Note(0, 9, 120, 64)
                                     .Note(0, 0, 36, 64)
                                     .End(99)));
    player::DrumNotes notes;
    notes.channel = 9;
    notes.on[38] = false;
    notes.offset[36] = 4;
    notes.offset[120] = 10;
    EXPECT_TRUE(player->SetDrumNotes(notes));
    Log();
    Play();
    Run(20);
    EXPECT_EQ(Log(), "10 992840; 10 997840; 10 902440");
    // Closed, it leaves no note behind whose end would go elsewhere.
    EXPECT_TRUE(player->SetDrumNotes({}));
    EXPECT_EQ(Log(), "20 B97800; 20 B97B00");
}

TEST_F(ChannelTest, WhatIsNotSent) {
    Load(MillisecondFile().Track(TrackBuilder()
                                     .Text(0, 5, "la")
                                     .Sysex(1, {0x43, 0xF7})
                                     .Sysex(1, Bytes(65'535, 0x11))
                                     .Short(1, 0xB0, 7, 200 - 73)
                                     .Short(1, 0xB0, 8, 9)
                                     .End(99)));
    decoded->song.tracks[0].last->prev->length = 0;
    Play();
    Run(50);
    EXPECT_EQ(Log(), "1 F043F7; 3 B0077F");
    EXPECT_EQ(host.messages.size(), 1U);
    EXPECT_NE(host.messages.at(0).find("64K"), std::string::npos);
    Stop();
    EXPECT_TRUE(player->MoveToTimePosition(0));
    player->SuppressSysex(true);
    Log();
    Play();
    Run(50);
    // The volume that it had before it is set.
    EXPECT_EQ(Messages(), "B00764 B0077F");
    EXPECT_EQ(host.messages.size(), 1U);
}

TEST_F(ChannelTest, LocalControlComesBackOnlyWithBothOptions) {
    Load(TwoChannels());
    Play();
    player->SetLocalControlOptions(true, false);
    Stop();
    EXPECT_EQ(Messages().find("7A7F"), std::string::npos);
    player->SetLocalControlOptions(true, true);
    Stop();
    std::string on = "0 silence";
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        on += "; 0 " + Hex(Bytes{static_cast<std::uint8_t>(0xB0 + channel), 122, 127});
    }
    EXPECT_EQ(Log(), on);
}

TEST_F(ChannelTest, PanicReachesAllPorts) {
    driver.Add("Module");
    Load(TwoChannels());
    player->OpenPort(0);
    player->OpenPort(1);
    player->Panic();
    Collect();
    EXPECT_EQ(log.size(), 2U * 16 * 3);
}

// Whatever the song selects meanwhile, a reset included, is heard when the trial ends, not before.
TEST_F(ChannelTest, AVoiceIsTriedInPlaceOfThoseOfTheSong) {
    Load(MillisecondFile().Track(TrackBuilder()
                                     .Short(0, 0xB2, 0, 8)
                                     .Program(0, 2, 24)
                                     .Note(100, 2, 60, 64)
                                     .Sysex(50, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                                     .Short(50, 0xB2, 32, 1)
                                     .Program(0, 2, 25)
                                     .Short(0, 0xB2, 7, 90)
                                     .NoteOff(100, 2, 60)
                                     .End(500)));
    EXPECT_TRUE(player->TryVoice(2, player::TrialVoice{104, 3, 17}));
    Play();
    Run(250);
    EXPECT_EQ(Messages().find("C218"), std::string::npos);
    EXPECT_TRUE(player->MoveToTimePosition(50));
    Run(300);
    const std::string heard = Messages();
    EXPECT_NE(heard.find("F07E7F0901F7 B20068 B22003 C211 B2075A"), std::string::npos) << heard;
    EXPECT_EQ(heard.find("C219"), std::string::npos);
    EXPECT_TRUE(player->TryVoice(2, std::nullopt));
    EXPECT_EQ(Messages(), "B20000 B22001 C219");
    Stop();
    Messages();
    EXPECT_TRUE(player->TryVoice(2, player::TrialVoice{0, 0, 5}));
    EXPECT_EQ(Messages(), "B20000 B22000 C205");
}

} // namespace
} // namespace tracksmith::test
