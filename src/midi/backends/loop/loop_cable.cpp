#include "midi/backends/loop/loop_cable.h"

#include <utility>

namespace tracksmith::midi::loop {

ResultCode LoopCable::Record(std::span<const std::uint8_t> message) {
    const auto time = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    const ResultCode result =
        present_ ? std::exchange(nextFailure_, kNoError) : ResultCode(kNoDriver);
    noDelay_.wait_for(lock, delay_, [this] { return delay_.count() == 0; });
    if (result == kNoError && recording_) {
        sent_.push_back({{message.begin(), message.end()}, time});
    }
    return result;
}

ResultCode LoopCable::Send(std::span<const std::uint8_t> message) {
    const ResultCode result = Record(message);
    if (result == kNoError) {
        Deliver(message);
    }
    return result;
}

void LoopCable::Deliver(std::span<const std::uint8_t> message) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto timeMs = static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    const std::scoped_lock lock(receiversMutex_);
    for (const Receiver& receiver : receivers_) {
        receiver.call(message, timeMs);
    }
}

void LoopCable::AddReceiver(const void* owner, MessageReceiver receiver) {
    const std::scoped_lock lock(receiversMutex_);
    receivers_.push_back({owner, std::move(receiver)});
}

void LoopCable::RemoveReceiver(const void* owner) {
    const std::scoped_lock lock(receiversMutex_);
    std::erase_if(receivers_, [&](const Receiver& receiver) { return receiver.owner == owner; });
}

void LoopCable::SetPresent(bool present) {
    const std::scoped_lock lock(mutex_);
    present_ = present;
}

bool LoopCable::Present() const {
    const std::scoped_lock lock(mutex_);
    return present_;
}

void LoopCable::FailNext(ResultCode code) {
    const std::scoped_lock lock(mutex_);
    nextFailure_ = code;
}

ResultCode LoopCable::TakeFailure() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(nextFailure_, kNoError);
}

void LoopCable::SetDelay(std::chrono::milliseconds delay) {
    const std::scoped_lock lock(mutex_);
    delay_ = delay;
    noDelay_.notify_all();
}

void LoopCable::SetRecording(bool recording) {
    const std::scoped_lock lock(mutex_);
    recording_ = recording;
}

std::vector<LoopMessage> LoopCable::TakeSent() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(sent_, {});
}

void LoopCable::SetVolume(std::uint32_t volume) {
    const std::scoped_lock lock(mutex_);
    volume_ = volume;
}

std::uint32_t LoopCable::Volume() const {
    const std::scoped_lock lock(mutex_);
    return volume_;
}

} // namespace tracksmith::midi::loop
