#include "player_fixture.h"

#include "midi/fake_input_driver.h"
#include "player/send_queue.h"
#include "player/texts.h"

namespace tracksmith::test {
namespace {

using PortsTest = PlayerFixture;

Bytes LongNotes() {
    return MillisecondFile()
        .Track(TrackBuilder()
                   .Sysex(0, {0x43, 0xF7})
                   .Program(0, 0, 5)
                   .Note(100, 0, 60, 64)
                   .NoteOff(500, 0, 60)
                   .Note(100, 0, 61, 64)
                   .Note(500, 0, 62, 64)
                   .End(500))
        .Build();
}

std::string Told(const Text& text, const std::string& name = "Keyboard") {
    return player::texts::OfPort(text, Language::English, name);
}

TEST_F(PortsTest, AFailingPortIsLostSaidOnceAndSkipped) {
    Load(LongNotes());
    Play();
    Run(200);
    Log();
    driver.SetFailing("Keyboard", true);
    sounding.Forget("Keyboard");
    Run(2000);
    EXPECT_EQ(host.messages, std::vector{Told(player::texts::kPortLost)});
    EXPECT_FALSE(player->OutputDevices().at(0).usable);
    EXPECT_TRUE(player->Playing());
    // It is there and can be opened, but keeps failing.
    for (int i = 0; i < 3; ++i) {
        player->CheckPorts();
        Run(500);
    }
    EXPECT_EQ(host.messages.size(), 1U);
    // Once it has worked again, its next failure is told.
    driver.SetFailing("Keyboard", false);
    player->CheckPorts();
    Run(1);
    driver.SetFailing("Keyboard", true);
    EXPECT_TRUE(player->SendChannel(1, 0xB0, 7, 1));
    Run(1);
    EXPECT_EQ(host.messages.size(), 2U);
    EXPECT_TRUE(player->Stop());
}

TEST_F(PortsTest, ASlowPortIsLost) {
    Load(LongNotes());
    // A channel message takes 0.96 ms on the cable.
    std::int64_t delayUs = 50'960;
    driver.onMessage = [&] { clock->Pass(delayUs); };
    Play();
    Run(650);
    EXPECT_TRUE(host.messages.empty());
    delayUs = 50'961;
    Run(650);
    EXPECT_EQ(host.messages.size(), 1U);
    driver.onMessage = nullptr;
    sounding.Forget("Keyboard");
}

TEST_F(PortsTest, AReturningPortIsSetUpAgain) {
    Load(LongNotes());
    Play();
    Run(200);
    driver.SetPresent("Keyboard", false);
    sounding.Forget("Keyboard");
    player->CheckPorts();
    Run(100);
    EXPECT_EQ(host.messages.size(), 1U);
    EXPECT_EQ(player->OutputDevices().at(0).timesLost, 1U);
    driver.Rename("Keyboard", "keyboard 20:0");
    driver.SetPresent("keyboard 20:0", true);
    Log();
    player->CheckPorts();
    EXPECT_EQ(player->OutputPortCount(), 1U);
    EXPECT_EQ(Log(), "300 silence; 300 F043F7; 300 C005");
    Run(450);
    EXPECT_EQ(Log(), "600 803C40; 700 903D40");
    // A second loss is told again.
    driver.SetPresent("keyboard 20:0", false);
    sounding.Forget("keyboard 20:0");
    player->CheckPorts();
    Run(10);
    EXPECT_EQ(host.messages.size(), 2U);
}

TEST_F(PortsTest, ListsDevicesByNameAndAddsNewOnesBehind) {
    driver.Add("Alpha");
    Load(LongNotes());
    const auto names = [&] {
        std::string text;
        for (const player::OutputDevice& device : player->OutputDevices()) {
            text += device.productName + std::to_string(device.port) + " ";
        }
        return text;
    };
    EXPECT_EQ(names(), "Alpha0 Keyboard1 ");
    driver.Add("Beta");
    player->CheckPorts();
    EXPECT_EQ(names(), "Alpha0 Beta2 Keyboard1 ");
}

// One of two devices of the same make goes: the other one's port stays.
TEST_F(PortsTest, LikeDevicesAreNotConfused) {
    driver.Rename("Keyboard", "Synth 20:0");
    driver.Add("Synth 24:0");
    Load(LongNotes());
    player->OpenPort(0);
    player->OpenPort(1);
    driver.SetPresent("Synth 20:0", false);
    player->CheckPorts();
    EXPECT_FALSE(player->OutputDevices().at(0).usable);
    EXPECT_TRUE(player->OutputDevices().at(1).usable);
}

TEST_F(PortsTest, PlaysOnWithoutAnyDevice) {
    driver.SetPresent("Keyboard", false);
    Load(LongNotes());
    EXPECT_EQ(host.messages,
              std::vector<std::string>{"There is no midi interface in your computer!\r\n"
                                       "Therefor no midi playback posible!"});
    EXPECT_EQ(player->OutputPortCount(), 0U);
    Play();
    Run(200);
    EXPECT_EQ(player->Position(), 200);
    EXPECT_EQ(player->Activity().Sounding(0, 60), 1U);
}

TEST_F(PortsTest, GermanTextsTellApartMissingAndUnusableDevices) {
    for (const bool present : {false, true}) {
        driver.SetPresent("Keyboard", present);
        driver.SetNameless("Keyboard", true);
        RecordingMessageHost german(Language::German);
        song::Song song;
        player::TMidiPlayer silent(song);
        silent.FormCreate({{{&driver, false}}, nullptr, "", german});
        EXPECT_EQ(german.messages.at(0).find("MIDI-Interface") != std::string::npos, !present);
        EXPECT_EQ(german.messages.at(0).find("Midi-Schnittstelle") != std::string::npos, present);
        EXPECT_FALSE(silent.Play());
    }
}

struct Refusal {
    midi::ResultCode code;
    bool lost;
};

class CodeTest : public PlayerFixture, public ::testing::WithParamInterface<Refusal> {};

// A message that the driver refuses is left out; only real loss ends a port.
TEST_P(CodeTest, TellsRefusalsFromLoss) {
    Load(LongNotes());
    Play();
    Run(200);
    driver.SetSendResult("Keyboard", GetParam().code);
    EXPECT_TRUE(player->SendChannel(1, 0xB0, 7, 1));
    Run(1);
    player->SendChannel(1, 0xB0, 7, 2);
    Run(1);
    driver.SetSendResult("Keyboard", midi::kNoError);
    Log();
    player->SendChannel(1, 0xB0, 7, 3);
    EXPECT_EQ(Messages(), GetParam().lost ? "" : "B10703");
    const Text& text = GetParam().lost ? player::texts::kPortLost : player::texts::kMessageRefused;
    EXPECT_EQ(host.messages, std::vector{Told(text)});
    EXPECT_EQ(player->OutputDevices().at(0).timesLost, GetParam().lost ? 1U : 0U);
    player->CheckPorts();
    Stop();
}

INSTANTIATE_TEST_SUITE_P(
    Codes, CodeTest,
    ::testing::Values(Refusal{midi::kNotSupported, false}, Refusal{midi::kInvalidParameter, false},
                      Refusal{midi::kUnprepared, false}, Refusal{midi::kBadOpenMode, false},
                      Refusal{midi::kNoMemory, false}, Refusal{midi::kUnspecifiedError, true},
                      Refusal{midi::kBadDeviceId, true}, Refusal{midi::kInvalidHandle, true},
                      Refusal{midi::kNoDriver, true}, Refusal{midi::kNoDevice, true}));

// A busy driver is tried again, in order; one that stays busy for longer than the cable is dead.
TEST_F(PortsTest, ABusyDriverIsTriedAgain) {
    Load(LongNotes());
    Play();
    Run(50);
    driver.SetSendResult("Keyboard", midi::kNotReady);
    clock->awaitSending = [] {}; // nothing can be sent yet
    clock->RunUntil(clock->ElapsedUs() + 100'000);
    driver.SetSendResult("Keyboard", midi::kNoError);
    EXPECT_EQ(Log(), "0 F043F7; 0 C005; 150 903C40"); // without another message behind it
    driver.SetSendResult("Keyboard", midi::kNotReady);
    clock->RunUntil(clock->ElapsedUs() + 450'000);
    EXPECT_TRUE(player->SendChannel(1, 0xB0, 7, 1));
    EXPECT_FALSE(player->WaitUntilSent(std::chrono::milliseconds(5)));
    clock->Pass(50'000);
    driver.SetSendResult("Keyboard", midi::kNoError);
    EXPECT_EQ(Log(), "650 803C40; 650 B10701");
    EXPECT_TRUE(host.messages.empty());
    driver.SetSendResult("Keyboard", midi::kNotReady);
    player->SendChannel(1, 0xB0, 7, 2);
    while (!player->OutputDevices().at(0).timesLost) {
        clock->Pass(10'000);
    }
    driver.SetSendResult("Keyboard", midi::kNoError);
    player->CheckPorts();
    Stop();
}

TEST_F(PortsTest, APortInUseIsTriedOnceSaidOnceAndTakenWhenItIsFree) {
    driver.SetOpenResult("Keyboard", midi::kAllocated);
    Load(LongNotes());
    EXPECT_EQ(player->OutputDevices().at(0).state, player::PortState::Closed);
    const player::PlayResult result = player->Play();
    EXPECT_TRUE(result.playing);
    EXPECT_EQ(result.silentPorts, std::vector<std::string>{"Keyboard"});
    EXPECT_EQ(driver.Openings("Keyboard"), 1);
    const std::vector inUse{player::texts::OfPort(player::texts::kPortNotOpened, Language::English,
                                                  "Keyboard", player::texts::kInUse)};
    EXPECT_EQ(host.messages, inUse);
    EXPECT_EQ(player->OutputDevices().at(0).state, player::PortState::NotOpened);
    EXPECT_FALSE(player->OutputDevices().at(0).usable);
    player->CheckPorts();
    EXPECT_EQ(driver.Openings("Keyboard"), 2);
    Run(200);
    portChanges = 0;
    driver.SetOpenResult("Keyboard", midi::kNoError);
    player->CheckPorts();
    EXPECT_EQ(portChanges, 1);
    EXPECT_EQ(host.messages, inUse);
    EXPECT_EQ(player->OutputDevices().at(0).state, player::PortState::Open);
    EXPECT_EQ(Log(), "200 silence; 200 F043F7; 200 C005");
    // A port that nobody plays on is left alone.
    driver.Add("Module");
    driver.SetOpenResult("Module", midi::kAllocated);
    player->CheckPorts();
    EXPECT_FALSE(player->OpenPort(1));
    player->CheckPorts();
    EXPECT_EQ(driver.Openings("Module"), 1);
    EXPECT_EQ(host.messages.size(), 2U);
    EXPECT_TRUE(player->Play().silentPorts.empty());
}

// What was stored for a device that is not plugged in, and a back end that takes its time.
TEST_F(PortsTest, AMissingPortAndALateOneAreToldApart) {
    driver.Add("Module");
    Load(LongNotes());
    driver.SetPresent("Keyboard", false);
    driver.SetOpenResult("Module", midi::kNotReady);
    Route(3, 1, 3);
    EXPECT_EQ(player->Play().silentPorts.size(), 2U);
    EXPECT_EQ(host.messages, (std::vector{Told(player::texts::kPortAbsent),
                                          Told(player::texts::kPortNotReady, "Module")}));
    driver.SetOpenResult("Module", midi::kNoError);
    driver.SetPresent("Keyboard", true);
    player->CheckPorts();
    EXPECT_TRUE(player->Play().silentPorts.empty());
    EXPECT_EQ(host.messages.size(), 2U);
}

TEST_F(PortsTest, APortNewlyRoutedIsSetUpBeforeItsChannels) {
    driver.Add("Module");
    Load(LongNotes());
    Play();
    Run(200);
    Log();
    player::ChannelRoutes routes = player->Routes().Routes();
    routes[0] = {1, 4};
    EXPECT_TRUE(player->SetRoutes(routes));
    EXPECT_EQ(Log(), "200 B07800; 200 B07B00; 200 F043F7; 200 C405");
    EXPECT_EQ(player->Activity().Sounding(0, 60), 0U);
    // The same once more changes nothing.
    EXPECT_TRUE(player->SetRoutes(routes));
    EXPECT_EQ(Log(), "");
}

// The driver never gives a message back: closing waits half a second for it, but not here.
TEST_F(PortsTest, ClosingWaitsElsewhere) {
    Load(LongNotes());
    driver.keepsHeaders = true;
    Play();
    Run(50);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(player->ReopenPort(0));
    player->CheckPorts();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(450));
    EXPECT_EQ(player->OutputDevices().at(0).state, player::PortState::NotOpened);
    Log();
    while (player->OutputDevices().at(0).state != player::PortState::Open) {
        player->CheckPorts();
    }
    EXPECT_EQ(Log(), "50 silence; 50 F043F7; 50 C005");
    EXPECT_TRUE(host.messages.empty());
}

TEST(SendQueueTest, KeepsOrderAndBytesAndRefusesWhatHasNoRoom) {
    player::SendQueue queue;
    EXPECT_FALSE(queue.Put(1, {}));
    queue.Reserve(100);
    std::vector<std::uint8_t> message;
    message.reserve(100);
    Bytes data;
    for (std::uint8_t i = 0; i < 200; ++i) {
        data.assign(i % 40, i);
        ASSERT_TRUE(queue.Put(i, data));
        ASSERT_TRUE(queue.Put(0xFF, Bytes(i % 20, 7)));
        data.insert(data.begin(), i);
        ASSERT_TRUE(queue.Take(message));
        ASSERT_EQ(message, data);
        ASSERT_TRUE(queue.Take(message));
        ASSERT_EQ(message.size(), i % 20U + 1);
    }
    EXPECT_FALSE(queue.Take(message));
    EXPECT_FALSE(queue.Put(1, Bytes(96)));
    EXPECT_TRUE(queue.Put(1, Bytes(95)));
    EXPECT_FALSE(queue.Put(1, {}));
}

/// An input of two devices and a player that passes on what comes.
class InputTest : public PlayerFixture {
protected:
    InputTest() {
        SetDevices({"Piano 20:0", "Pads"});
        Load(LongNotes());
        driver.clock = [] { return 0; }; // the clock goes with its player
        player->FormDestroy();
        player = std::make_unique<player::TMidiPlayer>(decoded->song);
        player->SetListener({{}, [this] { ++portChanges; }, {}});
        player->FormCreate({{{&driver, false}}, &input, "Piano 24:0", host, kPatient});
        EXPECT_TRUE(player->OpenPort(0));
        player->SetMidiThru(true);
    }
    void SetDevices(const std::vector<std::string>& names) {
        input.devices.resize(names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            input.devices[i].productName = names[i];
        }
    }
    // What a note on the input comes to.
    std::string Press() {
        input.DeliverShort(0x643C92);
        system::DispatchMessages();
        return Messages();
    }

    midi::FakeInputDriver input;
};

TEST_F(InputTest, FollowsTheChosenDeviceByItsName) {
    EXPECT_EQ(player->SelectedInput(), 0U);
    EXPECT_TRUE(player->ConnectMidiInPort());
    EXPECT_EQ(Press(), "923C64");
    // It goes, comes back under another number, and is taken again.
    SetDevices({"Pads"});
    player->CheckPorts();
    EXPECT_EQ(host.messages, std::vector{Told(player::texts::kInputLost, "Piano 24:0")});
    EXPECT_EQ(input.calls.back(), "Close");
    EXPECT_EQ(player->SelectedInput(), std::nullopt);
    SetDevices({"Pads", "Piano 28:0"});
    input.results["Open"] = midi::kAllocated;
    player->CheckPorts();
    input.results.clear();
    player->CheckPorts();
    EXPECT_EQ(player->InputDevices().size(), 2U);
    EXPECT_EQ(portChanges, 2);
    EXPECT_EQ(Press(), "923C64");
    EXPECT_EQ(host.messages.size(), 1U);
    // Disconnected it stays so, and the key that is down is released.
    player->DisconnectMidiInPort();
    EXPECT_EQ(Messages(), "823C40");
    input.calls.clear();
    player->CheckPorts();
    EXPECT_EQ(input.Count("Open"), 0);
}

TEST_F(InputTest, WaitsForADeviceThatIsNotThereYet) {
    player->SelectInput("Wind");
    EXPECT_FALSE(player->ConnectMidiInPort());
    EXPECT_TRUE(host.messages.empty());
    SetDevices({"Wind"});
    player->CheckPorts();
    EXPECT_EQ(Press(), "923C64");
    // One that is there and cannot be opened is told.
    input.results["Open"] = midi::kAllocated;
    player->SelectInput("Wind");
    Messages();
    EXPECT_FALSE(player->ConnectMidiInPort());
    EXPECT_EQ(host.messages, std::vector<std::string>{"system text 4"});
}

} // namespace
} // namespace tracksmith::test
