#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "midi/backends/winmm/driver.h"
#include "midi/backends/winmm/wineloop/steering.h"

namespace tracksmith::midi::test {

using Bytes = std::vector<std::uint8_t>;

/// Driver messages that can be ordered to fail, numbered as in the system's driver interface.
enum DriverMessage : std::uint32_t {
    kModOpen = 3,
    kModClose = 4,
    kModPrepare = 5,
    kModUnprepare = 6,
    kModData = 7,
    kModLongData = 8,
    kModReset = 9,
    kModGetVolume = 10,
    kModSetVolume = 11,
    kMidOpen = 55,
    kMidClose = 56,
    kMidPrepare = 57,
    kMidUnprepare = 58,
    kMidAddBuffer = 59,
    kMidStart = 60,
    kMidStop = 61,
    kMidReset = 62
};

/// What a callback was told; `bytes` are those recorded in the header.
struct Notice {
    std::uint32_t message;
    std::uintptr_t param1;
    std::uintptr_t param2;
    Bytes bytes;
};

/// Names the rows of a test with parameters by their driver message.
inline constexpr auto kByMessage = [](const auto& row) {
    return "Message" + std::to_string(row.param.message);
};

/// Collects the notices of a port, without those of opening and closing.
class Notices {
public:
    static void Callback(DeviceHandle handle, std::uint32_t message, void* instance,
                         std::uintptr_t param1, std::uintptr_t param2);
    /// Waits until there are `count` and takes them; after 5 s what there is.
    std::vector<Notice> Take(std::size_t count);
    /// All that came until now.
    std::size_t Count();

private:
    std::mutex lock_;
    std::condition_variable arrived_;
    std::vector<Notice> notices_;
};

/// A header with its own bytes.
struct LongMessage {
    explicit LongMessage(Bytes content);
    LongMessage(const LongMessage&) = delete;
    LongMessage& operator=(const LongMessage&) = delete;

    Bytes bytes;
    MidiHeader header;
};

/// The output or input of the device under test, open for as long as it exists.
template <typename Driver>
struct LoopPort {
    LoopPort() {
        EXPECT_EQ(driver.Open(wineloop::kTestDevice, Notices::Callback, &notices, handle),
                  kNoError);
        EXPECT_NE(handle, 0U);
    }
    LoopPort(const LoopPort&) = delete;
    LoopPort& operator=(const LoopPort&) = delete;
    ~LoopPort() {
        if (handle != 0) {
            EXPECT_EQ(Close(), kNoError);
        }
    }
    ResultCode Close() { return driver.Close(std::exchange(handle, 0)); }

    Driver driver;
    Notices notices;
    DeviceHandle handle = 0;
};
using LoopOutputPort = LoopPort<WinmmOutputDriver>;
using LoopInputPort = LoopPort<WinmmInputDriver>;

/// Prepares and sends a message.
void Send(LoopOutputPort& port, LongMessage& message);
/// Prepares a buffer and lends it to an input.
void Lend(LoopInputPort& port, LongMessage& buffer);

/// Checks that the loop-back devices are there and steers them. At its end no call of a test may
/// have been a wrong use of the driver.
class LoopTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    void Steer(wineloop::Steering message, std::uintptr_t param1 = 0, std::uintptr_t param2 = 0);
    void FailNext(DriverMessage call, ResultCode code) { Steer(wineloop::kFailNext, call, code); }
    void SetCompletion(wineloop::Completion completion, std::chrono::milliseconds delay = {});
    std::uint32_t Misuses() { return Ask(wineloop::kMisuseCount); }
    std::uint32_t LentBuffers() { return Ask(wineloop::kBufferCount); }

private:
    std::uint32_t Ask(wineloop::Steering question);

    WinmmOutputDriver steering_;
    DeviceHandle steeringHandle_ = 0;
};

} // namespace tracksmith::midi::test
