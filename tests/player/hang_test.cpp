#include <thread>

#include "player_fixture.h"

#include "player/texts.h"

namespace tracksmith::test {
namespace {

using std::chrono::steady_clock;

// What no command may take longer than is 250 ms; the machine may be busy.
constexpr std::chrono::milliseconds kLimit{500};

/// A driver that does not return from a call, and what the owner's thread may do meanwhile.
class HangTest : public PlayerFixture {
protected:
    HangTest() { sendPatience = player::PlayerSetup::kSendPatience; }
    // Channel 0 goes to the Keyboard, channel 1 to the Module.
    void LoadTwoPorts() {
        driver.Add("Module");
        Load(MillisecondFile()
                 .Track(TrackBuilder()
                            .Sysex(0, {0x43, 0xF7})
                            .Program(0, 0, 5)
                            .Note(100, 0, 60, 64)
                            .NoteOff(500, 0, 60)
                            .Note(400, 0, 61, 64)
                            .NoteOff(100, 0, 61)
                            .End(500))
                 .Track(TrackBuilder().Note(100, 1, 70, 64).NoteOff(500, 1, 70).End(99)));
        Route(1, 1, 1);
    }
    // Plays until the Keyboard hangs in its note at 100 ms.
    void HangInAPass() {
        Play();
        Run(50);
        driver.SetHanging("Keyboard", true);
        clock->JumpTo(100'000);
        driver.AwaitHanging(1);
    }
    void Release() {
        driver.SetHanging("Keyboard", false);
        driver.AwaitHanging(0);
    }
    void ReleaseAndWait() {
        Release();
        while (hangsOver == 0) {
            system::DispatchMessages();
        }
    }
    template <typename Command>
    void Quick(Command command) {
        const auto start = steady_clock::now();
        command();
        EXPECT_LT(steady_clock::now() - start, kLimit);
    }
    player::PortState State(std::size_t device) const {
        return player->OutputDevices().at(device).state;
    }
};

// The crash that this guards against: a driver hangs, another song takes the place of the one that
// plays, the driver returns, and the tempo is changed.
TEST_F(HangTest, TheSongMayGoWhileAPassHangs) {
    LoadTwoPorts();
    HangInAPass();
    Quick([&] { EXPECT_FALSE(player->Stop()); });
    EXPECT_EQ(told, (std::vector{true, false}));
    EXPECT_EQ(player->HangingPort(), "Keyboard");
    Quick([&] { EXPECT_FALSE(player->Play()); });
    song::ClearSong(decoded->song);
    song::DecodeMidiData(
        decoded->song,
        MillisecondFile().Track(TrackBuilder().Note(10, 0, 40, 64).NoteOff(9, 0, 40).End()).Build(),
        {}, host);
    decoded->Timed();
    Quick([&] { EXPECT_FALSE(player->SongLoaded()); });
    Quick([&] { EXPECT_FALSE(player->RebuildAfterEdit()); });
    EXPECT_TRUE(player->SetTempoOffset(120));
    EXPECT_TRUE(player->SetLoop(0, 100));
    EXPECT_TRUE(player->MoveToTimePosition(3));
    EXPECT_EQ(hangsOver, 0);
    ReleaseAndWait();
    EXPECT_EQ(player->HangingPort(), "");
    EXPECT_TRUE(player->SetTempoOffset(0));
    EXPECT_TRUE(player->MoveToTimePosition(0));
    EXPECT_TRUE(player->Stop());
    Log();
    Play();
    Run(50);
    EXPECT_EQ(Log(), "100 C000; 110 902840; 119 802840");
}

// Not now: nothing changes, nobody waits, and playing goes on afterwards without a gap or a double.
TEST_F(HangTest, CommandsThatNeedThePassAnswerNotNow) {
    LoadTwoPorts();
    HangInAPass();
    Quick([&] { EXPECT_FALSE(player->SetTempoOffset(60)); });
    Quick([&] {
        EXPECT_FALSE(player->SetLoop(0, 99));
        EXPECT_FALSE(player->SetLooping(true));
        EXPECT_FALSE(player->MoveToTimePosition(50));
        EXPECT_FALSE(player->SetTrackMuted(0, true));
        EXPECT_FALSE(player->SetTrackTimeShift(0, 5));
        EXPECT_FALSE(player->SetDrumNotes({}));
        EXPECT_FALSE(player->TakeTempoAsFile());
        player::ChannelRoutes routes = player->Routes().Routes();
        routes[1].port = 0;
        EXPECT_FALSE(player->SetRoutes(routes));
    });
    Quick([&] { player->SetChannelMuted(5, true); });
    EXPECT_EQ(player->TempoOffset(), 0);
    EXPECT_FALSE(player->Loop().on);
    EXPECT_EQ(player->Routes().Port(1), 1U);
    EXPECT_TRUE(player->Playing());
    ReleaseAndWait();
    Run(1100);
    EXPECT_EQ(Log(),
              "0 F043F7; 0 C005; 100 903C40; 100 B57800; 100 B57B00; 100 914640; 600 803C40; "
              "600 814640; 1000 903D40; 1100 803D40");
    EXPECT_EQ(decoded->song.tempos.at(0).tempo, 500'000);
}

TEST_F(HangTest, ALongHangLosesThePortUntilItReturns) {
    LoadTwoPorts();
    HangInAPass();
    clock->Pass(50'000);
    player->CheckPorts();
    EXPECT_EQ(State(0), player::PortState::Open);
    clock->Pass(50'000);
    for (int i = 0; i < 2; ++i) {
        Quick([&] { player->CheckPorts(); });
        system::DispatchMessages();
    }
    EXPECT_EQ(State(0), player::PortState::Hanging);
    EXPECT_FALSE(player->OutputDevices().at(0).usable);
    EXPECT_EQ(host.messages,
              std::vector{player::texts::OfPort(player::texts::kPortHangs, Language::English,
                                                "Keyboard", player::texts::kSwitchOff)});
    EXPECT_FALSE(player->SendMidiData(0, 0x90, 1, 1));
    Release();
    Run(100);
    EXPECT_EQ(State(0), player::PortState::Lost);
    Log();
    player->CheckPorts();
    EXPECT_EQ(State(0), player::PortState::Open);
    EXPECT_EQ(Log(), "300 silence; 300 F043F7; 300 C005");
    EXPECT_EQ(player->OutputDevices().at(0).timesLost, 1U);
    Stop();
}

TEST_F(HangTest, ChoosingAnotherOutputGoesOnWithoutTheHangingOne) {
    LoadTwoPorts();
    HangInAPass();
    clock->Pass(100'000);
    player::ChannelRoutes routes;
    for (std::size_t channel = 0; channel < player::kChannels; ++channel) {
        routes[channel] = {1, static_cast<std::uint8_t>(channel)};
    }
    Log();
    Quick([&] { EXPECT_TRUE(player->SetRoutes(routes)); });
    EXPECT_EQ(hangsOver, 1);
    EXPECT_EQ(player->HangingPort(), "");
    EXPECT_TRUE(player->Playing());
    Collect();
    Run(900);
    // The note at 100 has passed; what it was set up by has not.
    EXPECT_EQ(Log(),
              "200 B17800; 200 B17B00; 200 F043F7; 200 C005; 600 803C40; 600 814640; "
              "1000 903D40; 1100 803D40");
    Release();
    while (State(0) != player::PortState::Lost) {
        std::this_thread::yield();
    }
    player->CheckPorts();
    EXPECT_TRUE(player->Stop());
}

// Nothing of the player is left when the driver returns at last.
TEST_F(HangTest, ThePlayerMayGoWhileAPassHangs) {
    LoadTwoPorts();
    HangInAPass();
    clock->Pass(100'000);
    Collect();
    driver.clock = [] { return 0; };
    // Last messages and closing have longer than a command.
    const auto start = steady_clock::now();
    player.reset();
    decoded.reset();
    EXPECT_LT(steady_clock::now() - start, 4 * kLimit);
    Release();
}

// The owner's own messages hang elsewhere, too: chase, panic, live controls.
TEST_F(HangTest, MessagesOfTheOwnersThreadHangNobody) {
    LoadTwoPorts();
    EXPECT_TRUE(player->MoveToTimePosition(50));
    EXPECT_TRUE(player->OpenPort(0));
    driver.SetHanging("Keyboard", true);
    EXPECT_TRUE(player->SendMidiData(0, 0x90, 1, 1));
    driver.AwaitHanging(1);
    EXPECT_TRUE(player->SendMidiData(0, 0x80, 1, 1));
    clock->Pass(100'000);
    Quick([&] { player->Panic(); });
    Quick([&] { EXPECT_EQ(player->Play().silentPorts, std::vector<std::string>{"Keyboard"}); });
    Run(60);
    EXPECT_EQ(Log(), "150 914640") << "the other port plays";
    Quick([&] { EXPECT_TRUE(player->Stop()); });
    EXPECT_EQ(player->HangingPort(), "");
    Release();
    player->FormDestroy();
    Collect();
    sounding.Forget("Keyboard"); // it is lost, so that nothing more is sent to it
}

// As long as the cable takes, the driver may: what comes meanwhile waits, and nothing is lost.
TEST_F(HangTest, LiveMessagesWaitForALongOne) {
    Load(MillisecondFile().Track(
        TrackBuilder().Sysex(100, Bytes(3124, 0x11)).Note(50, 0, 60, 1).NoteOff(9, 0, 60).End(99)));
    HangInAPass();
    clock->Pass(1'049'000);
    Quick([&] { EXPECT_TRUE(player->SendChannel(3, 0xB0, 7, 100)); });
    player->CheckPorts();
    Release();
    Run(1);
    Collect();
    ASSERT_EQ(log.size(), 4U);
    log.erase(log.begin());
    EXPECT_EQ(Messages(), "B30764 903C01 803C40");
    EXPECT_EQ(player->OutputDevices().at(0).timesLost, 0U);
    EXPECT_TRUE(host.messages.empty());
    Stop();
}

} // namespace
} // namespace tracksmith::test
