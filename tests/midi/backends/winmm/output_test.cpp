#include <functional>
#include <numeric>
#include <string>

#include "midi/backends/winmm/loop_fixture.h"

namespace tracksmith::midi {
namespace {

using namespace std::chrono_literals;
using namespace test;
using wineloop::Completion;

class Output : public LoopTest {};

TEST_F(Output, AThousandShortMessagesArriveInOrder) {
    LoopOutputPort output;
    LoopInputPort input;
    ASSERT_EQ(input.driver.Start(input.handle), kNoError);
    for (std::uint32_t i = 0; i < 1000; ++i) {
        ASSERT_EQ(
            output.driver.ShortMessage(output.handle, 0xE0 | (i % 128) << 8 | (i / 128) << 16),
            kNoError);
    }
    const std::vector<Notice> notices = input.notices.Take(1000);
    ASSERT_EQ(notices.size(), 1000U);
    for (std::uint32_t i = 0; i < 1000; ++i) {
        EXPECT_EQ(notices[i].message, kInputData);
        EXPECT_EQ(notices[i].param1, 0xE0 | (i % 128) << 8 | (i / 128) << 16);
    }
}

class OutputLength : public LoopTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(OutputLength, ALongMessageArrivesByteForByteAndIsGivenBack) {
    LoopOutputPort output;
    LoopInputPort input;
    LongMessage buffer(Bytes(70'000));
    Lend(input, buffer);
    ASSERT_EQ(input.driver.Start(input.handle), kNoError);

    Bytes content(GetParam());
    std::iota(content.begin(), content.end(), std::uint8_t{0xF0});
    LongMessage message(content);
    message.header.user = &message;
    Send(output, message);

    const std::vector<Notice> done = output.notices.Take(1);
    ASSERT_EQ(done.size(), 1U);
    EXPECT_EQ(done[0].message, kOutputDone);
    EXPECT_EQ(done[0].param1, reinterpret_cast<std::uintptr_t>(&message.header));
    EXPECT_EQ(message.header.flags, MidiHeader::kDone | MidiHeader::kPrepared);
    EXPECT_EQ(message.header.user, &message);
    EXPECT_EQ(output.driver.UnprepareHeader(output.handle, message.header), kNoError);
    EXPECT_EQ(message.header.flags & MidiHeader::kPrepared, 0U);

    const std::vector<Notice> received = input.notices.Take(1);
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].message, kInputLongData);
    EXPECT_EQ(received[0].bytes, content);
    EXPECT_EQ(input.driver.UnprepareHeader(input.handle, buffer.header), kNoError);
}

INSTANTIATE_TEST_SUITE_P(Bytes, OutputLength, testing::Values(0U, 1U, 3U, 4096U, 65'535U));

struct OutputCall {
    DriverMessage message;
    std::function<ResultCode(LoopOutputPort&, LongMessage&)> call;
};

class OutputCode : public LoopTest, public testing::WithParamInterface<OutputCall> {};

TEST_P(OutputCode, OfAFailingCallIsHandedOn) {
    LoopOutputPort output;
    LongMessage message({0xF0, 0xF7});
    ASSERT_EQ(output.driver.PrepareHeader(output.handle, message.header), kNoError);
    for (const ResultCode code : {kNoMemory, kNotReady, ResultCode{4711}}) {
        if (output.handle == 0) {
            ASSERT_EQ(output.driver.Open(wineloop::kTestDevice, Notices::Callback, &output.notices,
                                         output.handle),
                      kNoError);
        }
        FailNext(GetParam().message, code);
        EXPECT_EQ(GetParam().call(output, message), code);
    }
    // A refused message is not under way.
    EXPECT_EQ(output.notices.Count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, OutputCode,
    testing::Values(
        OutputCall{kModClose, [](auto& port, auto&) { return port.Close(); }},
        OutputCall{kModReset, [](auto& port, auto&) { return port.driver.Reset(port.handle); }},
        OutputCall{kModData,
                   [](auto& port, auto&) { return port.driver.ShortMessage(port.handle, 0x90); }},
        OutputCall{kModPrepare,
                   [](auto& port, auto&) {
                       LongMessage other({0xF0, 0xF7});
                       return port.driver.PrepareHeader(port.handle, other.header);
                   }},
        OutputCall{kModLongData,
                   [](auto& port, auto& message) {
                       return port.driver.LongMessage(port.handle, message.header);
                   }},
        OutputCall{kModUnprepare,
                   [](auto& port, auto& message) {
                       return port.driver.UnprepareHeader(port.handle, message.header);
                   }}),
    kByMessage);

TEST_F(Output, AFailedOpeningLeavesNoHandle) {
    FailNext(kModOpen, kNoMemory);
    WinmmOutputDriver driver;
    DeviceHandle handle = 1;
    EXPECT_EQ(driver.Open(wineloop::kTestDevice, Notices::Callback, nullptr, handle), kNoMemory);
    EXPECT_EQ(handle, 0U);
    const LoopOutputPort next;
}

TEST_F(Output, AQueuedMessageCannotBeUnpreparedUntilItIsGivenBack) {
    LoopOutputPort output;
    SetCompletion(Completion::Held);
    LongMessage message({0xF0, 0x01, 0xF7});
    Send(output, message);
    EXPECT_EQ(output.driver.UnprepareHeader(output.handle, message.header), kStillPlaying);
    EXPECT_EQ(output.notices.Count(), 0U);
    EXPECT_EQ(Misuses(), 1U);

    Steer(wineloop::kRelease);
    EXPECT_EQ(output.notices.Take(1).size(), 1U);
    EXPECT_EQ(output.driver.UnprepareHeader(output.handle, message.header), kNoError);
    Steer(wineloop::kRestore);
}

TEST_F(Output, AnUnpreparedMessageIsRefused) {
    LoopOutputPort output;
    LongMessage message({0xF0, 0x01, 0xF7});
    EXPECT_EQ(output.driver.LongMessage(output.handle, message.header), kUnprepared);
    // The system refuses it before the driver sees it, or the driver counts it.
    EXPECT_LE(Misuses(), 1U);
    Steer(wineloop::kRestore);
}

TEST_F(Output, ResetGivesBackWhatIsUnderWay) {
    LoopOutputPort output;
    SetCompletion(Completion::Held);
    LongMessage first({0xF0, 0x01, 0xF7});
    LongMessage second({0xF0, 0x02, 0xF7});
    Send(output, first);
    Send(output, second);
    EXPECT_EQ(output.driver.Reset(output.handle), kNoError);
    // Reset itself has given them back, in the order of sending.
    EXPECT_EQ(output.notices.Count(), 2U);
    const std::vector<Notice> done = output.notices.Take(2);
    ASSERT_EQ(done.size(), 2U);
    EXPECT_EQ(done[0].param1, reinterpret_cast<std::uintptr_t>(&first.header));
    EXPECT_EQ(done[1].param1, reinterpret_cast<std::uintptr_t>(&second.header));
}

TEST_F(Output, CompletionMayComeBeforeTheCallReturns) {
    LoopOutputPort output;
    SetCompletion(Completion::Inside);
    LongMessage message({0xF0, 0x01, 0xF7});
    Send(output, message);
    EXPECT_EQ(output.notices.Count(), 1U);
}

TEST_F(Output, ALateCompletionIsNotHurriedByReset) {
    LoopOutputPort output;
    SetCompletion(Completion::Late, 150ms);
    LongMessage message({0xF0, 0x01, 0xF7});
    const auto sent = std::chrono::steady_clock::now();
    Send(output, message);
    EXPECT_EQ(output.driver.Reset(output.handle), kNoError);
    EXPECT_EQ(output.notices.Take(1).size(), 1U);
    EXPECT_GE(std::chrono::steady_clock::now() - sent, 140ms);
    EXPECT_EQ(output.driver.UnprepareHeader(output.handle, message.header), kNoError);
}

TEST_F(Output, AMissingCompletionShowsInClosing) {
    LoopOutputPort output;
    SetCompletion(Completion::Lost);
    LongMessage message({0xF0, 0x01, 0xF7});
    Send(output, message);
    EXPECT_EQ(output.driver.Reset(output.handle), kNoError);
    EXPECT_EQ(output.notices.Count(), 0U);
    EXPECT_EQ(output.Close(), kStillPlaying);
    EXPECT_EQ(Misuses(), 1U);
    Steer(wineloop::kRestore);
    const LoopOutputPort next;
}

} // namespace
} // namespace tracksmith::midi
