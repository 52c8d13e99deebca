#include <array>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "base/system/message_poster.h"

#include "midi/backends/loop/driver.h"
#include "midi/errors.h"
#include "midi/fake_output_driver.h"
#include "midi/midi_output.h"

namespace tracksmith::midi {
namespace {

using Calls = std::vector<std::string>;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::array<std::uint8_t, 4> kSysex{0xF0, 0x7E, 0x7F, 0xF7};

struct OutputLongTest : testing::Test {
    OutputLongTest() {
        output->SetOnMidiOutput([this](TMidiOutput& /*sender*/) { ++sent; });
        output->Open();
        driver.calls.clear();
    }

    FakeOutputDriver driver;
    std::unique_ptr<TMidiOutput> output = std::make_unique<TMidiOutput>(driver);
    int sent = 0;
};

TEST_F(OutputLongTest, ReleasesHeadersOnlyWhenTheyComeBack) {
    for (int i = 0; i < 3; ++i) {
        output->PutLong(kSysex);
    }
    system::DispatchMessages();
    EXPECT_EQ(sent, 0);
    std::jthread([this] {
        driver.Complete();
        driver.Complete();
    }).join();
    // Nothing happens on the driver's thread
    EXPECT_EQ(driver.calls.back(), "LongMessage 4");
    system::DispatchMessages();
    EXPECT_EQ(sent, 2);
    driver.Complete();
    system::DispatchMessages();
    EXPECT_EQ(sent, 3);
    EXPECT_EQ(std::count(driver.calls.begin(), driver.calls.end(), "UnprepareHeader 4"), 3);
}

TEST_F(OutputLongTest, HandsOutAnEmptyMessageToo) {
    output->PutLong(nullptr, 0);
    EXPECT_EQ(driver.calls, (Calls{"PrepareHeader 0", "LongMessage 0"}));
    EXPECT_EQ(driver.held.at(0)->data, nullptr);
    driver.Complete();
    system::DispatchMessages();
    EXPECT_EQ(sent, 1);
}

TEST_F(OutputLongTest, RefusesMoreThan65535Bytes) {
    const std::vector<std::uint8_t> longest(65'535, 0x11);
    output->PutLong(longest);
    EXPECT_EQ(driver.longBytes, longest);
    const std::vector<std::uint8_t> tooLong(65'536, 0x11);
    driver.calls.clear();
    EXPECT_THROW(output->PutLong(tooLong), EMidiOutputError);
    EXPECT_EQ(output->Error(), kInvalidParameter);
    EXPECT_TRUE(driver.calls.empty());
    driver.Complete();
}

TEST_F(OutputLongTest, TakesBackAHeaderThatWasNotSent) {
    driver.results["LongMessage"] = kNotReady;
    EXPECT_THROW(output->PutLong(kSysex), EMidiOutputError);
    EXPECT_EQ(driver.calls, (Calls{"PrepareHeader 4", "LongMessage 4", "UnprepareHeader 4"}));
    driver.calls.clear();
    output->Close();
    EXPECT_EQ(driver.calls, (Calls{"Close 77"}));
}

TEST_F(OutputLongTest, CloseGetsHeadersBackByReset) {
    driver.resetGivesBack = true;
    output->PutLong(kSysex);
    driver.calls.clear();
    const auto start = steady_clock::now();
    output->Close();
    EXPECT_LT(steady_clock::now() - start, milliseconds(450));
    EXPECT_EQ(driver.calls, (Calls{"Reset 77", "UnprepareHeader 4", "Close 77"}));
    system::DispatchMessages();
    EXPECT_EQ(sent, 0);
}

TEST_F(OutputLongTest, CloseWaitsForALateDriver) {
    output->PutLong(kSysex);
    driver.calls.clear();
    const std::jthread late([this] {
        std::this_thread::sleep_for(milliseconds(10));
        driver.Complete();
    });
    output->Close();
    EXPECT_EQ(driver.calls, (Calls{"Reset 77", "UnprepareHeader 4", "Close 77"}));
}

TEST_F(OutputLongTest, CloseAbandonsWhatNeverComesBack) {
    output->PutLong(kSysex);
    driver.results["Close"] = kStillPlaying;
    driver.calls.clear();
    const auto start = steady_clock::now();
    EXPECT_THROW(output->Close(), EMidiOutputError);
    const auto took = steady_clock::now() - start;
    EXPECT_GE(took, milliseconds(500));
    EXPECT_LT(took, milliseconds(5000));
    EXPECT_EQ(driver.calls, (Calls{"Reset 77", "Close 77"}));

    // The next connection is not confused by what the driver still does with the former
    void* formerInstance = driver.instance;
    driver.results.clear();
    EXPECT_TRUE(output->Open());
    EXPECT_NE(driver.instance, formerInstance);
    output->Close();
    output.reset();
    driver.held.at(0)->data[0] = 1;
    driver.instance = formerInstance;
    driver.Complete();
    system::DispatchMessages();
    EXPECT_EQ(sent, 0);
}

// The owner goes on at once; the waiting is done elsewhere, also for headers that come late.
TEST_F(OutputLongTest, ADetachedPortIsClosedOnAnotherThread) {
    output->PutLong(kSysex);
    output->PutLong(kSysex);
    std::unique_ptr<OutputLink> link = output->Detach();
    EXPECT_EQ(output->State(), MidiOutputState::mosClosed);
    EXPECT_EQ(output->Detach(), nullptr);
    driver.calls.clear();
    std::jthread closing([&] {
        EXPECT_EQ(link->Close(false), kNoError);
        link.reset();
    });
    std::this_thread::sleep_for(milliseconds(10));
    driver.Complete();
    driver.Complete();
    closing.join();
    EXPECT_EQ(std::count(driver.calls.begin(), driver.calls.end(), "UnprepareHeader 4"), 2);
    EXPECT_EQ(driver.calls.back(), "Close 77");
    system::DispatchMessages();
    EXPECT_EQ(sent, 0);
    EXPECT_TRUE(output->Open());
    driver.results["LongMessage"] = kNotReady;
    EXPECT_EQ(output->TryLong(kSysex), kNotReady);
    EXPECT_EQ(output->TryLong(std::vector<std::uint8_t>(65'536)), kInvalidParameter);
    EXPECT_EQ(output->TryShort(0x90, 1, 2), kNoError);
    EXPECT_EQ(driver.calls.back(), "ShortMessage 131472");
    output->Close();
    EXPECT_EQ(output->TryShort(0x90, 1, 2), kInvalidHandle);
    EXPECT_EQ(output->TryLong(kSysex), kInvalidHandle);
    EXPECT_EQ(output->Error(), kNoError);
}

TEST_F(OutputLongTest, KeepsAHeaderThatTheDriverStillUses) {
    output->PutLong(kSysex);
    MidiHeader* header = driver.held.at(0);
    driver.results["UnprepareHeader"] = kStillPlaying;
    driver.Complete();
    system::DispatchMessages();
    EXPECT_EQ(sent, 1);
    header->data[3] = 0;
    EXPECT_EQ(output->Error(), kStillPlaying);
}

TEST(OutputThroughLoop, SendsFromAnotherThreadWhileHeadersAreReleased) {
    auto backend = std::make_shared<loop::LoopBackend>();
    loop::LoopOutputDriver driver(backend);
    TMidiOutput output(driver);
    int sent = 0;
    output.SetOnMidiOutput([&](TMidiOutput& /*sender*/) { ++sent; });
    backend->SetRecording(0, true);
    output.Open();
    std::atomic<bool> ended = false;
    std::jthread playing([&] {
        for (std::uint8_t i = 0; i < 100; ++i) {
            output.PutShort(0x90, i, 1);
            output.PutLong(kSysex);
        }
        ended = true;
    });
    while (!ended) {
        system::DispatchMessages();
    }
    system::DispatchMessages();
    EXPECT_EQ(sent, 100);
    const auto messages = backend->TakeSent(0);
    ASSERT_EQ(messages.size(), 200U);
    EXPECT_EQ(messages[198].bytes, (std::vector<std::uint8_t>{0x90, 99, 1}));
    EXPECT_EQ(messages[199].bytes, std::vector<std::uint8_t>(kSysex.begin(), kSysex.end()));
}

TEST(OutputThroughLoop, SurvivesAHangingAndAVanishingDevice) {
    auto backend = std::make_shared<loop::LoopBackend>();
    loop::LoopOutputDriver driver(backend);
    TMidiOutput output(driver);
    output.Open();
    driver.HoldCompletions(true);
    output.PutLong(kSysex);
    EXPECT_THROW(output.Close(), EMidiOutputError);
    EXPECT_EQ(output.Error(), kStillPlaying);
    driver.HoldCompletions(false);
    output.Open();
    backend->Vanish(0);
    EXPECT_THROW(output.NoteOn(0, 1, 1), EMidiOutputError);
    EXPECT_EQ(output.Error(), kNoDriver);
    output.Close();
    EXPECT_EQ(output.DeviceCount(), 0U);
    EXPECT_THROW(output.Open(), EMidiOutputError);
    backend->Return(0);
    output.SetProductName("Loop 1");
    EXPECT_TRUE(output.Open());
}

} // namespace
} // namespace tracksmith::midi
