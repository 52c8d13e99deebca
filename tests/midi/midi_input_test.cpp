#include "midi/midi_input.h"

#include <gtest/gtest.h>
#include <thread>

#include "base/system/message_poster.h"

#include "midi/backends/loop/backend.h"
#include "midi/errors.h"
#include "midi/fake_input_driver.h"
#include "midi/portable_driver.h"
#include "midi/portable_input_driver.h"

namespace tracksmith::midi {
namespace {

using Bytes = std::vector<std::uint8_t>;

template <typename Operation>
std::string Raised(Operation operation) {
    try {
        operation();
    } catch (const EMidiInputError& error) {
        return error.what();
    }
    return {};
}

Bytes SysexOf(const TMyMidiEvent& event) {
    return {event.Sysex, event.Sysex + event.SysexLength};
}

struct InputTest : testing::Test {
    FakeInputDriver driver;
    TMidiInput input{driver};
};

TEST_F(InputTest, BeginsClosedOnTheFirstDeviceWithDefaults) {
    driver.devices[0].productName = "Keys";
    const TMidiInput other(driver);
    EXPECT_EQ(other.ProductName(), "Keys");
    EXPECT_EQ(other.State(), MidiInputState::misClosed);
    EXPECT_EQ(other.Capacity(), 1024);
    EXPECT_EQ(other.SysexBufferSize(), 4096);
    EXPECT_EQ(other.SysexBufferCount(), 16);
    EXPECT_FALSE(other.SysexOnly());
    EXPECT_EQ(other.FilteredMessages().size(), 2U);
    driver.devices.clear();
    EXPECT_EQ(TMidiInput(driver).NumDevs(), 0U);
}

TEST_F(InputTest, LendsAndReleasesItsBuffers) {
    input.SetSysexBufferSize(100);
    input.SetSysexBufferCount(3);
    EXPECT_TRUE(input.OpenAndStart());
    EXPECT_EQ(input.State(), MidiInputState::misOpen);
    ASSERT_EQ(driver.buffers.size(), 3U);
    EXPECT_EQ(input.MidiHdrs().size(), 3U);
    EXPECT_EQ(driver.buffers[2]->bufferLength, 100U);
    input.StopAndClose();
    EXPECT_EQ(input.State(), MidiInputState::misClosed);
    EXPECT_TRUE(input.MidiHdrs().empty());
    const std::vector<std::string> expected{"Capabilities",
                                            "Open",
                                            "PrepareHeader",
                                            "PrepareHeader",
                                            "PrepareHeader",
                                            "AddBuffer",
                                            "AddBuffer",
                                            "AddBuffer",
                                            "Start",
                                            "Stop",
                                            "Reset",
                                            "UnprepareHeader",
                                            "UnprepareHeader",
                                            "UnprepareHeader",
                                            "Close"};
    EXPECT_EQ(driver.calls, expected);
    input.StopAndClose();
    EXPECT_EQ(driver.calls, expected);
}

TEST_F(InputTest, RefusesChangesWhenOpenAndNamesMissingDevices) {
    EXPECT_EQ(Raised([&] { input.SetDeviceID(1); }), "Invalid device ID");
    EXPECT_EQ(Raised([&] { input.SetProductName("X"); }), "MIDI Input Device X not installed ");
    input.Open();
    EXPECT_EQ(Raised([&] { input.SetDeviceID(0); }), "Change to DeviceID while device was open");
    EXPECT_EQ(Raised([&] { input.SetProductName(""); }),
              "Change to ProductName while device was open");
    EXPECT_EQ(Raised([&] { input.SetSysexBufferSize(1); }),
              "Change to SysexBufferSize while device was open");
    EXPECT_EQ(Raised([&] { input.SetSysexBufferCount(1); }),
              "Change to SysexBufferCount while device was open");
}

TEST_F(InputTest, ClosesAgainWhenOpeningFailsPartWay) {
    for (const std::string call : {"Open", "PrepareHeader", "AddBuffer"}) {
        driver.results = {{call, kNoMemory}};
        driver.calls.clear();
        EXPECT_EQ(Raised([&] { input.Open(); }), "system text 7") << call;
        EXPECT_EQ(input.State(), MidiInputState::misClosed);
        EXPECT_EQ(input.Error(), 7);
        EXPECT_TRUE(input.MidiHdrs().empty());
        EXPECT_EQ(driver.Count("Close"), call == "Open" ? 0 : 1);
    }
    driver.results = {{"Open", 1000}};
    EXPECT_EQ(Raised([&] { input.Open(); }), "Specified error number is out of range");
}

TEST_F(InputTest, IsClosedAlsoWhenTheDriverFails) {
    for (const std::string call : {"Reset", "UnprepareHeader", "Close"}) {
        driver.results.clear();
        input.Open();
        driver.results = {{call, kStillPlaying}};
        EXPECT_EQ(Raised([&] { input.Close(); }), "system text 65") << call;
        EXPECT_EQ(input.State(), MidiInputState::misClosed);
        EXPECT_EQ(input.MIDIHandle(), 0U);
        // What comes late from the driver must not reach freed memory
        if (call == "Close") {
            driver.DeliverShort(0x90);
            system::DispatchMessages();
        }
    }
}

TEST_F(InputTest, UnpacksShortMessagesInOrder) {
    int calls = 0;
    input.SetOnMidiInput([&](TMidiInput& /*sender*/) { ++calls; });
    input.Open();
    std::jthread([&] {
        driver.DeliverShort(0x7F3C90, 12);
        driver.DeliverShort(0x05C3, 13);
    }).join();
    system::DispatchMessages();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(input.MessageCount(), 2);
    const auto first = input.GetMidiEvent();
    EXPECT_EQ(first->MidiMessage, 0x90);
    EXPECT_EQ(first->Data1, 0x3C);
    EXPECT_EQ(first->Data2, 0x7F);
    EXPECT_EQ(first->Time, 12U);
    EXPECT_EQ(first->Sysex, nullptr);
    const auto second = input.GetMidiEvent();
    EXPECT_EQ(second->MidiMessage, 0xC3);
    EXPECT_EQ(second->Time, 13U);
    EXPECT_EQ(input.GetMidiEvent(), nullptr);
}

TEST_F(InputTest, CopiesLongMessagesAndLendsTheirBuffersAgain) {
    input.SetSysexBufferCount(2);
    input.Open();
    for (std::uint8_t i = 0; i < 5; ++i) {
        const Bytes bytes{0xF0, i, 0xF7};
        driver.DeliverLong(bytes, i % 2 == 0 ? kInputLongData : kInputLongError);
        const auto event = input.GetMidiEvent();
        ASSERT_NE(event, nullptr);
        EXPECT_EQ(event->MidiMessage, 0xF0);
        EXPECT_EQ(event->Time, 5U);
        EXPECT_EQ(SysexOf(*event), bytes);
        EXPECT_EQ(driver.buffers.size(), 2U);
        EXPECT_EQ(driver.buffers.back()->bytesRecorded, 0U);
    }
    driver.DeliverLong({}, kInputLongData);
    EXPECT_EQ(input.GetMidiEvent()->Sysex, nullptr);
}

TEST_F(InputTest, LosesAMessageWhoseBufferCannotBeLentAgain) {
    input.Open();
    driver.DeliverLong({0xF0, 0xF7}, kInputLongData);
    driver.results["AddBuffer"] = kNoDriver;
    EXPECT_EQ(Raised([&] { input.GetMidiEvent(); }), "system text 6");
    EXPECT_EQ(input.MessageCount(), 0);
}

TEST_F(InputTest, LosesTheMessageThatFindsTheQueueFull) {
    int overflows = 0;
    input.SetOnOverflow([&](TMidiInput& /*sender*/) { ++overflows; });
    input.Open();
    for (std::uint32_t i = 0; i < 1024; ++i) {
        driver.DeliverShort(0x90 | i << 8);
    }
    system::DispatchMessages();
    EXPECT_EQ(overflows, 0);
    driver.DeliverShort(0xA0);
    system::DispatchMessages();
    EXPECT_EQ(overflows, 1);
    EXPECT_EQ(input.MessageCount(), 1024);
    input.GetMidiEvent();
    driver.DeliverShort(0xB0);
    std::uint8_t last = 0;
    while (const auto event = input.GetMidiEvent()) {
        last = event->MidiMessage;
    }
    EXPECT_EQ(last, 0xB0);
}

TEST_F(InputTest, FlushesAndForgetsWhatIsQueuedOnClose) {
    input.Open();
    driver.DeliverShort(0x90);
    input.FlushQueue();
    EXPECT_EQ(input.MessageCount(), 0);
    driver.DeliverShort(0x90);
    int calls = 0;
    input.SetOnMidiInput([&](TMidiInput& /*sender*/) { ++calls; });
    input.Close();
    system::DispatchMessages();
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(input.GetMidiEvent(), nullptr);
    input.Open();
    EXPECT_EQ(input.MessageCount(), 0);
}

TEST_F(InputTest, ChangesTheDevice) {
    driver.devices.resize(2);
    driver.devices[1].productName = "B";
    input.Open();
    EXPECT_TRUE(input.ChangeDevice(1, true));
    EXPECT_EQ(input.ProductName(), "B");
    EXPECT_EQ(driver.calls.back(), "Start");
    EXPECT_FALSE(input.ChangeDevice(0, false));
    EXPECT_EQ(input.State(), MidiInputState::misClosed);
}

struct FilterCase {
    TMidiMsgs filtered;
    bool sysexOnly;
    /// Status bytes that pass of F8, FE and 90 followed by a long message.
    Bytes passing;
};

class InputFilterTest : public testing::TestWithParam<FilterCase> {};

TEST_P(InputFilterTest, LetsPass) {
    FakeInputDriver driver;
    TMidiInput input(driver);
    input.SetFilteredMessages(GetParam().filtered);
    input.SetSysexOnly(GetParam().sysexOnly);
    input.Open();
    for (const std::uint32_t packed : {0xF8U, 0xFEU, 0x01F890U}) {
        driver.DeliverShort(packed);
    }
    driver.DeliverLong({0xF0, 0xF7}, kInputLongData);
    Bytes passed;
    while (const auto event = input.GetMidiEvent()) {
        passed.push_back(event->MidiMessage);
    }
    EXPECT_EQ(passed, GetParam().passing);
}

INSTANTIATE_TEST_SUITE_P(
    Filters, InputFilterTest,
    testing::Values(
        FilterCase{{TMidiMsg::msgActiveSensing, TMidiMsg::msgMidiTimeCode}, false, {0x90, 0xF0}},
        FilterCase{{TMidiMsg::msgActiveSensing}, false, {0xF8, 0x90, 0xF0}},
        FilterCase{{TMidiMsg::msgMidiTimeCode}, false, {0xFE, 0x90, 0xF0}},
        FilterCase{{}, false, {0xF8, 0xFE, 0x90, 0xF0}}, FilterCase{{}, true, {0xF0}}));

TEST(InputThroughLoop, ReceivesWhatAnotherThreadSends) {
    auto backend = std::make_shared<loop::LoopBackend>(2);
    PortableOutputDriver outputs(backend);
    PortableInputDriver inputs(backend);
    TMidiInput input(inputs);
    input.SetSysexBufferSize(8);
    input.SetProductName("Loop 2");
    std::size_t shorts = 0;
    Bytes joined;
    input.SetOnMidiInput([&](TMidiInput& sender) {
        while (const auto event = sender.GetMidiEvent()) {
            shorts += event->Sysex == nullptr ? 1 : 0;
            joined.insert(joined.end(), event->Sysex, event->Sysex + event->SysexLength);
        }
    });
    input.OpenAndStart();
    Bytes sysex(20, 0x33);
    sysex.front() = 0xF0;
    sysex.back() = 0xF7;
    std::jthread sending([&] {
        for (int i = 0; i < 200; ++i) {
            const Bytes note{0x90, 1, 2};
            backend->Deliver(1, note);
        }
        backend->Deliver(1, sysex);
        backend->Deliver(0, sysex);
    });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (joined.size() < sysex.size() && std::chrono::steady_clock::now() < deadline) {
        system::DispatchMessages();
    }
    sending.join();
    EXPECT_EQ(shorts, 200U);
    EXPECT_EQ(joined, sysex);
    input.StopAndClose();
}

} // namespace
} // namespace tracksmith::midi
