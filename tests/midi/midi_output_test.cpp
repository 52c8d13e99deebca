#include "midi/midi_output.h"

#include <array>
#include <gtest/gtest.h>

#include "midi/errors.h"
#include "midi/fake_output_driver.h"

namespace tracksmith::midi {
namespace {

using Calls = std::vector<std::string>;

/// The text that `operation` raises; empty when it raises nothing.
template <typename Operation>
std::string Raised(Operation operation) {
    try {
        operation();
    } catch (const EMidiOutputError& error) {
        return error.what();
    }
    return {};
}

DeviceCapabilities Device(const std::string& name, std::uint16_t technology,
                          std::uint32_t support = 0) {
    DeviceCapabilities device;
    device.productName = name;
    device.driverVersion = 0x0203;
    device.technology = technology;
    device.voices = 32;
    device.notes = 24;
    device.channelMask = 0x0FFF;
    device.support = support;
    return device;
}

struct OutputTest : testing::Test {
    FakeOutputDriver driver;
    TMidiOutput output{driver};
};

TEST_F(OutputTest, OpensOnceAndClosesOnce) {
    EXPECT_EQ(output.State(), MidiOutputState::mosClosed);
    EXPECT_TRUE(output.Open());
    EXPECT_TRUE(output.Open());
    EXPECT_EQ(output.State(), MidiOutputState::mosOpen);
    EXPECT_EQ(output.MIDIHandle(), FakeOutputDriver::kHandle);
    EXPECT_TRUE(output.Close());
    EXPECT_TRUE(output.Close());
    EXPECT_EQ(output.State(), MidiOutputState::mosClosed);
    EXPECT_EQ(output.MIDIHandle(), 0U);
    EXPECT_EQ(driver.calls, (Calls{"Open 0", "Close 77"}));
}

TEST_F(OutputTest, ResetsOnCloseWhenAsked) {
    output.SetFullResetOnClose(true);
    output.Open();
    output.Close();
    EXPECT_EQ(driver.calls, (Calls{"Open 0", "Reset 77", "Close 77"}));
}

TEST_F(OutputTest, StaysClosedWhenTheDriverDoesNotOpen) {
    driver.results["Open"] = kAllocated;
    EXPECT_EQ(Raised([&] { output.Open(); }), "system text 4");
    EXPECT_EQ(output.State(), MidiOutputState::mosClosed);
    EXPECT_EQ(output.Error(), kAllocated);
}

TEST_F(OutputTest, IsClosedAlsoWhenResetOrCloseFail) {
    output.SetFullResetOnClose(true);
    for (const std::string call : {"Reset", "Close"}) {
        driver.results = {{call, kNoDriver}};
        output.Open();
        driver.calls.clear();
        EXPECT_EQ(Raised([&] { output.Close(); }), "system text 6") << call;
        EXPECT_EQ(output.State(), MidiOutputState::mosClosed);
        EXPECT_EQ(output.MIDIHandle(), 0U);
        EXPECT_EQ(driver.calls, (Calls{"Reset 77", "Close 77"}));
    }
}

TEST_F(OutputTest, RefusesToSendWhenClosed) {
    const TMyMidiEvent event;
    const std::array<std::uint8_t, 2> bytes{0xF0, 0xF7};
    EXPECT_EQ(Raised([&] { output.PutShort(0x90, 1, 2); }), "(Short Msg) Device not opened.");
    EXPECT_EQ(Raised([&] { output.PutLong(bytes); }), "(Long Msg) Device not opened.");
    EXPECT_EQ(Raised([&] { output.PutMidiEvent(event); }), "MIDI Output device not open");
    EXPECT_TRUE(driver.calls.empty());
}

TEST_F(OutputTest, RefusesToChangeTheDeviceWhenOpen) {
    output.Open();
    EXPECT_EQ(Raised([&] { output.SetDeviceID(0); }), "Change to DeviceID while device was open");
    EXPECT_EQ(Raised([&] { output.SetProductName(""); }),
              "Change to ProductName while device was open");
    EXPECT_EQ(Raised([&] { output.SetTechnology(OutPortTech::opt_None); }),
              "Change to Product Technology while device was open");
}

TEST_F(OutputTest, SelectsDevicesByNumberNameAndKind) {
    driver.devices = {Device("A", 1), Device("B", 2), Device("B", 4), Device("C", 9)};
    int changes = 0;
    output.SetOnDeviceChanged([&](TMidiOutput& sender) { changes += &sender == &output ? 1 : 0; });
    output.SetProductName("B");
    EXPECT_EQ(output.DeviceID(), 1U);
    EXPECT_EQ(output.Technology(), OutPortTech::opt_Synth);
    output.SetTechnology(OutPortTech::opt_FMSynth);
    EXPECT_EQ(output.DeviceID(), 2U);
    output.SetDeviceID(3);
    EXPECT_EQ(output.ProductName(), "C");
    EXPECT_EQ(output.Technology(), OutPortTech::opt_None);
    EXPECT_EQ(output.DriverVersion(), 0x0203U);
    EXPECT_EQ(output.Voices(), 32);
    EXPECT_EQ(output.Notes(), 24);
    EXPECT_EQ(output.ChannelMask(), 0x0FFF);
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(output.NumDevs(), 1U);
    EXPECT_EQ(output.DeviceCount(), 4U);
}

TEST_F(OutputTest, SaysWhichDeviceIsMissing) {
    driver.devices = {Device("A", 1)};
    EXPECT_EQ(Raised([&] { output.SetDeviceID(1); }), "Invalid device ID");
    EXPECT_EQ(Raised([&] { output.SetProductName("X"); }), "MIDI output Device X not installed");
    EXPECT_EQ(Raised([&] { output.SetTechnology(OutPortTech::opt_SQSynth); }),
              "MIDI output technology Square Wave Synth not installed");
    EXPECT_EQ(output.ProductName(), "");
}

TEST_F(OutputTest, DerivesFeaturesFromTheCapabilityBits) {
    const std::pair<std::uint32_t, TFeature> bits[] = {
        {DeviceCapabilities::kCache, TFeature::ftCaching},
        {DeviceCapabilities::kStream, TFeature::ftStreaming},
        {DeviceCapabilities::kVolume, TFeature::ftVolume},
        {DeviceCapabilities::kStereoVolume, TFeature::ftStereoVolume}};
    for (const auto& [bit, feature] : bits) {
        driver.devices = {Device("A", 1, bit)};
        output.SetDeviceID(0);
        EXPECT_EQ(output.SupportedFeatures(), TFeatures{feature});
        EXPECT_EQ(output.Support(), bit);
    }
}

TEST_F(OutputTest, SendsChannelMessages) {
    output.Open();
    driver.calls.clear();
    output.NoteOn(17, 60, 100);
    output.NoteOff(31, 60, 64);
    output.NoteAftertouch(2, 61, 5);
    output.ControllerChange(3, 7, 127);
    output.ProgramChange(4, 127);
    output.ChannelAftertouch(5, 9);
    output.ChangeInstrument(6, TGMInstrumentPatch::gmiAcousticGrandPiano);
    output.ChangeInstrument(6, TGMInstrumentPatch::gmiTrobone);
    output.ChangeInstrument(6, TGMInstrumentPatch::gmiGunshot);
    Calls expected;
    for (const int packed : {0x643C91, 0x403C8F, 0x053DA2, 0x7F07B3, 0x007FC4, 0x0009D5, 0x0000C6,
                             0x0039C6, 0x007FC6}) {
        expected.push_back("ShortMessage " + std::to_string(packed));
    }
    EXPECT_EQ(driver.calls, expected);
}

TEST_F(OutputTest, SendsReceivedEventsInTheirForm) {
    output.Open();
    driver.calls.clear();
    TMyMidiEvent event;
    event.MidiMessage = 0x90;
    event.Data1 = 1;
    event.Data2 = 2;
    output.PutMidiEvent(event);
    const std::uint8_t bytes[] = {0xF0, 1, 2, 0xF7};
    event.SetSysex(bytes, 4);
    output.PutMidiEvent(event);
    EXPECT_EQ(driver.calls, (Calls{"ShortMessage 131472", "PrepareHeader 4", "LongMessage 4"}));
    EXPECT_EQ(driver.longBytes, (std::vector<std::uint8_t>{0xF0, 1, 2, 0xF7}));
    driver.Complete();
}

TEST_F(OutputTest, SplitsTheVolumeWord) {
    for (const bool stereo : {false, true}) {
        driver.devices = {Device("A", 1, stereo ? DeviceCapabilities::kStereoVolume : 0)};
        output.SetDeviceID(0);
        output.SetVolume(0x1234, 0x5678);
        EXPECT_EQ(driver.volume, stereo ? 0x12345678U : 0x12341234U);
        driver.volume = 0xABCD0001;
        std::uint16_t left = 0;
        std::uint16_t right = 0;
        output.GetVolume(left, right);
        EXPECT_EQ(left, 0xABCD);
        EXPECT_EQ(right, stereo ? 0x0001 : 0xABCD);
        EXPECT_EQ(output.GetVolume(), 0xABCD);
        output.SetVolume(0x4321);
        EXPECT_EQ(driver.volume, 0x43214321U);
    }
}

TEST_F(OutputTest, PassesCachingAndDriverMessagesThrough) {
    output.Open();
    driver.calls.clear();
    std::array<std::uint16_t, 128> array{};
    array[127] = 5;
    EXPECT_TRUE(output.CachePatches(2, array, 3));
    EXPECT_TRUE(output.CacheDrumPatches(4, array, 1));
    driver.results["Message"] = 1234;
    EXPECT_EQ(output.DriverMidiMessage(1, 20, 300), 1234U);
    EXPECT_EQ(driver.calls,
              (Calls{"CachePatches 132355", "CacheDrumPatches 263425", "Message 321"}));
}

TEST_F(OutputTest, ChangesTheDeviceOfAnOpenPort) {
    driver.devices = {Device("A", 1), Device("B", 1)};
    output.Open();
    EXPECT_TRUE(output.ChangeDevice(1, true));
    EXPECT_EQ(output.State(), MidiOutputState::mosOpen);
    EXPECT_EQ(driver.calls.back(), "Open 1");
    EXPECT_FALSE(output.ChangeDevice(0, false));
    EXPECT_EQ(output.State(), MidiOutputState::mosClosed);
    EXPECT_EQ(output.ProductName(), "A");
}

struct ErrorCase {
    std::string call;
    ResultCode code;
    std::string text;
};

class OutputErrorTest : public testing::TestWithParam<ErrorCase> {};

TEST_P(OutputErrorTest, RaisesTheTextAndKeepsTheCode) {
    FakeOutputDriver driver;
    TMidiOutput output(driver);
    output.Open();
    driver.results[GetParam().call] = GetParam().code;
    const std::array<std::uint16_t, 128> array{};
    const std::array<std::uint8_t, 2> bytes{0xF0, 0xF7};
    const std::map<std::string, std::function<void()>> operations{
        {"CachePatches", [&] { output.CachePatches(0, array, 1); }},
        {"CacheDrumPatches", [&] { output.CacheDrumPatches(0, array, 1); }},
        {"ShortMessage", [&] { output.PutShort(0x90, 0, 0); }},
        {"PrepareHeader", [&] { output.PutLong(bytes); }},
        {"LongMessage", [&] { output.PutLong(bytes); }},
        {"SetVolume", [&] { output.SetVolume(1); }},
        {"GetVolume", [&] { output.GetVolume(); }}};
    EXPECT_EQ(Raised(operations.at(GetParam().call)), GetParam().text);
    EXPECT_EQ(output.Error(), GetParam().code);
    EXPECT_TRUE(driver.held.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Codes, OutputErrorTest,
    testing::Values(
        ErrorCase{"CachePatches", 5, "(Caching) The specified device handle is invalid."},
        ErrorCase{"CachePatches", 7,
                  "(Caching) The device does not have enough memory to cache all of the requested "
                  "patches."},
        ErrorCase{"CacheDrumPatches", 8,
                  "(Caching) The specified device does not support patch caching."},
        ErrorCase{"CachePatches", 10, "(Caching) The flag specified by wFlags is invalid."},
        ErrorCase{"CacheDrumPatches", 11,
                  "(Caching) The array pointed to by lpPatchArray is invalid."},
        ErrorCase{"ShortMessage", 5, "(Short Msg) The specified device handle is invalid."},
        ErrorCase{"ShortMessage", 67, "(Short Msg) The hardware is busy with other data."},
        ErrorCase{"ShortMessage", 70,
                  "(Short Msg) The application sent a message without a status byte to a stream "
                  "handle."},
        ErrorCase{"ShortMessage", 64, "system text 64"},
        ErrorCase{"LongMessage", 5, "(Long Msg) The specified device handle is invalid."},
        ErrorCase{"LongMessage", 11, "(Long Msg) The specified pointer or structure is invalid."},
        ErrorCase{"LongMessage", 64,
                  "(Long Msg) The buffer pointed to by lpMidiOutHdr has not been prepared."},
        ErrorCase{"LongMessage", 67, "(Long Msg) The hardware is busy with other data."},
        ErrorCase{"LongMessage", 70, "system text 70"},
        ErrorCase{"PrepareHeader", 5, "(Prep Header) The specified device handle is invalid."},
        ErrorCase{"PrepareHeader", 7,
                  "(Prep Header) The system is unable to allocate or lock memory."},
        ErrorCase{"PrepareHeader", 11,
                  "(Prep Header) The specified address is invalid or the given stream buffer is "
                  "greater than 64K."},
        ErrorCase{"PrepareHeader", 67, "system text 67"},
        ErrorCase{"SetVolume", 5, "system text 5"},
        ErrorCase{"GetVolume", 1000, "Specified error number is out of range"}));

} // namespace
} // namespace tracksmith::midi
