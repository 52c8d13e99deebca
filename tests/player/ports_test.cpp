#include "player_fixture.h"

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
    EXPECT_TRUE(player->Stop());
}

TEST_F(PortsTest, ASlowPortIsLost) {
    Load(LongNotes());
    std::int64_t delayUs = 50'000;
    driver.onMessage = [&] { clock->Pass(delayUs); };
    Play();
    Run(650);
    EXPECT_TRUE(host.messages.empty());
    delayUs = 50'001;
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

} // namespace
} // namespace tracksmith::test
