#include <functional>
#include <list>
#include <thread>

#include "midi/backends/winmm/loop_fixture.h"

namespace tracksmith::midi {
namespace {

using namespace std::chrono_literals;
using namespace test;

class Input : public LoopTest {
protected:
    // Sends a message and waits until it is delivered.
    void SendNow(Bytes bytes) {
        LongMessage message(std::move(bytes));
        Send(output_, message);
        EXPECT_EQ(output_.notices.Take(1).size(), 1U);
    }

    LoopOutputPort output_;
    LoopInputPort input_;
};

TEST_F(Input, BuffersCirculate) {
    std::list<LongMessage> buffers;
    for (int i = 0; i < 4; ++i) {
        Lend(input_, buffers.emplace_back(Bytes(16)));
    }
    ASSERT_EQ(input_.driver.Start(input_.handle), kNoError);
    for (std::uint8_t i = 0; i < 50; ++i) {
        const Bytes content = {0xF0, 0x7D, i, 0xF7};
        SendNow(content);
        const std::vector<Notice> received = input_.notices.Take(1);
        ASSERT_EQ(received.size(), 1U);
        EXPECT_EQ(received[0].bytes, content);
        EXPECT_EQ(LentBuffers(), 3U);
        auto& header = *reinterpret_cast<MidiHeader*>(received[0].param1);
        EXPECT_EQ(input_.driver.AddBuffer(input_.handle, header), kNoError);
        EXPECT_EQ(LentBuffers(), 4U);
    }
    EXPECT_EQ(input_.driver.Reset(input_.handle), kNoError);
}

TEST_F(Input, AMessageLongerThanABufferFillsSeveral) {
    std::list<LongMessage> buffers;
    for (int i = 0; i < 3; ++i) {
        Lend(input_, buffers.emplace_back(Bytes(16)));
    }
    ASSERT_EQ(input_.driver.Start(input_.handle), kNoError);
    Bytes content(40, 0x11);
    content.front() = 0xF0;
    content.back() = 0xF7;
    SendNow(content);
    Bytes received;
    for (const Notice& notice : input_.notices.Take(3)) {
        EXPECT_EQ(notice.message, kInputLongData);
        received.insert(received.end(), notice.bytes.begin(), notice.bytes.end());
    }
    EXPECT_EQ(received, content);
}

TEST_F(Input, ABrokenMessageIsToldAsSuch) {
    LongMessage buffer(Bytes(16));
    Lend(input_, buffer);
    ASSERT_EQ(input_.driver.Start(input_.handle), kNoError);
    Steer(wineloop::kNextLongIsBroken);
    SendNow({0xF0, 0x01});
    const std::vector<Notice> received = input_.notices.Take(1);
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].message, kInputLongError);
    EXPECT_EQ(received[0].bytes, (Bytes{0xF0, 0x01}));
}

TEST_F(Input, NothingArrivesBeforeTheStartOrAfterTheStop) {
    SendNow({0xF0, 0xF7});
    ASSERT_EQ(output_.driver.ShortMessage(output_.handle, 0x00403C90), kNoError);
    SendNow({0xF0, 0xF7});
    ASSERT_EQ(input_.driver.Start(input_.handle), kNoError);
    ASSERT_EQ(output_.driver.ShortMessage(output_.handle, 0x00403D90), kNoError);
    SendNow({0xF0, 0xF7});
    ASSERT_EQ(input_.driver.Stop(input_.handle), kNoError);
    ASSERT_EQ(output_.driver.ShortMessage(output_.handle, 0x00403E90), kNoError);
    SendNow({0xF0, 0xF7});
    const std::vector<Notice> received = input_.notices.Take(1);
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].param1, 0x00403D90U);
}

TEST_F(Input, TimesCountMillisecondsFromTheStart) {
    std::this_thread::sleep_for(60ms);
    ASSERT_EQ(input_.driver.Start(input_.handle), kNoError);
    const auto start = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(50ms);
    ASSERT_EQ(output_.driver.ShortMessage(output_.handle, 0xFE), kNoError);
    const std::vector<Notice> received = input_.notices.Take(1);
    ASSERT_EQ(received.size(), 1U);
    const auto passed = std::chrono::steady_clock::now() - start;
    EXPECT_GE(received[0].param2, 49U);
    EXPECT_LE(std::chrono::milliseconds(received[0].param2), passed + 1ms);
}

TEST_F(Input, ResetGivesBackEmptyBuffers) {
    std::list<LongMessage> buffers;
    for (int i = 0; i < 2; ++i) {
        Lend(input_, buffers.emplace_back(Bytes(16)));
    }
    EXPECT_EQ(input_.driver.UnprepareHeader(input_.handle, buffers.front().header), kStillPlaying);
    EXPECT_EQ(Misuses(), 1U);
    Steer(wineloop::kRestore);
    EXPECT_EQ(input_.driver.Reset(input_.handle), kNoError);
    const std::vector<Notice> received = input_.notices.Take(2);
    ASSERT_EQ(received.size(), 2U);
    for (const Notice& notice : received) {
        EXPECT_EQ(notice.message, kInputLongData);
        EXPECT_TRUE(notice.bytes.empty());
        EXPECT_EQ(input_.driver.UnprepareHeader(input_.handle,
                                                *reinterpret_cast<MidiHeader*>(notice.param1)),
                  kNoError);
    }
}

struct InputCall {
    DriverMessage message;
    std::function<ResultCode(LoopInputPort&, LongMessage&)> call;
};

class InputCode : public LoopTest, public testing::WithParamInterface<InputCall> {};

TEST_P(InputCode, OfAFailingCallIsHandedOn) {
    LoopInputPort input;
    LongMessage buffer(Bytes(16));
    ASSERT_EQ(input.driver.PrepareHeader(input.handle, buffer.header), kNoError);
    for (const ResultCode code : {kNoMemory, ResultCode{4711}}) {
        if (input.handle == 0) {
            ASSERT_EQ(input.driver.Open(wineloop::kTestDevice, Notices::Callback, &input.notices,
                                        input.handle),
                      kNoError);
        }
        FailNext(GetParam().message, code);
        EXPECT_EQ(GetParam().call(input, buffer), code);
    }
    EXPECT_EQ(LentBuffers(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, InputCode,
    testing::Values(
        InputCall{kMidClose, [](auto& port, auto&) { return port.Close(); }},
        InputCall{kMidReset, [](auto& port, auto&) { return port.driver.Reset(port.handle); }},
        InputCall{kMidStart, [](auto& port, auto&) { return port.driver.Start(port.handle); }},
        InputCall{kMidStop, [](auto& port, auto&) { return port.driver.Stop(port.handle); }},
        InputCall{kMidPrepare,
                  [](auto& port, auto&) {
                      LongMessage other(Bytes(16));
                      return port.driver.PrepareHeader(port.handle, other.header);
                  }},
        InputCall{kMidAddBuffer,
                  [](auto& port, auto& buffer) {
                      return port.driver.AddBuffer(port.handle, buffer.header);
                  }},
        InputCall{kMidUnprepare,
                  [](auto& port, auto& buffer) {
                      return port.driver.UnprepareHeader(port.handle, buffer.header);
                  }}),
    kByMessage);

TEST_F(LoopTest, AFailedOpeningOfAnInputLeavesNoHandle) {
    FailNext(kMidOpen, kNoMemory);
    WinmmInputDriver driver;
    DeviceHandle handle = 1;
    EXPECT_EQ(driver.Open(wineloop::kTestDevice, Notices::Callback, nullptr, handle), kNoMemory);
    EXPECT_EQ(handle, 0U);
}

// Without this the other tests' check for misuse could never fail.
TEST_F(LoopTest, ACallInsideACallbackIsCountedAsMisuse) {
    LoopOutputPort output;
    WinmmInputDriver driver;
    DeviceHandle handle = 0;
    const auto callBack = [](DeviceHandle input, std::uint32_t message, void*, std::uintptr_t,
                             std::uintptr_t) {
        if (message == kInputData) {
            WinmmInputDriver().Stop(input);
        }
    };
    ASSERT_EQ(driver.Open(wineloop::kTestDevice, callBack, nullptr, handle), kNoError);
    ASSERT_EQ(driver.Start(handle), kNoError);
    ASSERT_EQ(output.driver.ShortMessage(output.handle, 0xFE), kNoError);
    EXPECT_EQ(output.driver.Reset(output.handle), kNoError);
    EXPECT_EQ(Misuses(), 1U);
    Steer(wineloop::kRestore);
    EXPECT_EQ(driver.Close(handle), kNoError);
}

} // namespace
} // namespace tracksmith::midi
