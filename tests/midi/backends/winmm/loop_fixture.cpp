#include "midi/backends/winmm/loop_fixture.h"

#include <utility>

namespace tracksmith::midi::test {
namespace {

bool IsWanted(std::uint32_t message) {
    return message == kInputData || message == kInputLongData || message == kInputLongError ||
           message == kOutputDone;
}

void IgnoreNotices(DeviceHandle /*handle*/, std::uint32_t /*message*/, void* /*instance*/,
                   std::uintptr_t /*param1*/, std::uintptr_t /*param2*/) {}

} // namespace

void Notices::Callback(DeviceHandle /*handle*/, std::uint32_t message, void* instance,
                       std::uintptr_t param1, std::uintptr_t param2) {
    if (!IsWanted(message)) {
        return;
    }
    Notice notice{message, param1, param2, {}};
    if (message == kInputLongData || message == kInputLongError) {
        const auto& header = *reinterpret_cast<const MidiHeader*>(param1);
        notice.bytes.assign(header.data, header.data + header.bytesRecorded);
    }
    auto& self = *static_cast<Notices*>(instance);
    const std::lock_guard hold(self.lock_);
    self.notices_.push_back(std::move(notice));
    self.arrived_.notify_all();
}

std::vector<Notice> Notices::Take(std::size_t count) {
    std::unique_lock hold(lock_);
    const bool complete =
        arrived_.wait_for(hold, std::chrono::seconds(5), [&] { return notices_.size() >= count; });
    EXPECT_TRUE(complete) << notices_.size() << " of " << count << " notices came";
    return std::exchange(notices_, {});
}

std::size_t Notices::Count() {
    const std::lock_guard hold(lock_);
    return notices_.size();
}

LongMessage::LongMessage(Bytes content) : bytes(std::move(content)) {
    header.data = bytes.data();
    header.bufferLength = static_cast<std::uint32_t>(bytes.size());
}

void Send(LoopOutputPort& port, LongMessage& message) {
    EXPECT_EQ(port.driver.PrepareHeader(port.handle, message.header), kNoError);
    EXPECT_EQ(port.driver.LongMessage(port.handle, message.header), kNoError);
}

void Lend(LoopInputPort& port, LongMessage& buffer) {
    EXPECT_EQ(port.driver.PrepareHeader(port.handle, buffer.header), kNoError);
    EXPECT_EQ(port.driver.AddBuffer(port.handle, buffer.header), kNoError);
}

void LoopTest::SetUp() {
    ASSERT_EQ(steering_.DeviceCount(), wineloop::kDevices)
        << "wineloop.drv is not beside the program, or Wine's sound driver is not set to loop";
    ASSERT_EQ(WinmmInputDriver().DeviceCount(), wineloop::kDevices);
    ASSERT_EQ(steering_.Open(wineloop::kSteeringDevice, IgnoreNotices, nullptr, steeringHandle_),
              kNoError);
    Steer(wineloop::kRestore);
}

void LoopTest::TearDown() {
    if (steeringHandle_ != 0) {
        EXPECT_EQ(Misuses(), 0U);
        EXPECT_EQ(steering_.Close(steeringHandle_), kNoError);
    }
}

void LoopTest::Steer(wineloop::Steering message, std::uintptr_t param1, std::uintptr_t param2) {
    ASSERT_EQ(steering_.Message(steeringHandle_, message, param1, param2), kNoError);
}

void LoopTest::SetCompletion(wineloop::Completion completion, std::chrono::milliseconds delay) {
    Steer(wineloop::kComplete, static_cast<std::uintptr_t>(completion),
          static_cast<std::uintptr_t>(delay.count()));
}

std::uint32_t LoopTest::Ask(wineloop::Steering question) {
    std::uint32_t answer = UINT32_MAX;
    Steer(question, reinterpret_cast<std::uintptr_t>(&answer));
    return answer;
}

} // namespace tracksmith::midi::test
