#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

#include "midi/port_backend.h"

namespace tracksmith::midi::loop {

/// A message that went into a cable.
struct LoopMessage {
    std::vector<std::uint8_t> bytes;
    std::chrono::steady_clock::time_point time;

    bool operator==(const LoopMessage&) const = default;
};

/// What connects the output of a loop with its input, and the faults it is told to have. Thread
/// safe.
class LoopCable {
public:
    /// Receives one message as the output's Send does.
    ResultCode Send(std::span<const std::uint8_t> message);
    /// Hands a message to the receivers without any fault, as from a foreign device.
    void Deliver(std::span<const std::uint8_t> message);

    /// Adds a receiver, named by `owner`. Once RemoveReceiver has returned it is not called again.
    void AddReceiver(const void* owner, MessageReceiver receiver);
    void RemoveReceiver(const void* owner);

    void SetPresent(bool present);
    bool Present() const;
    void FailNext(ResultCode code);
    /// Takes the code that the next call shall fail with; kNoError when it shall not.
    ResultCode TakeFailure();
    /// Lets every sending take longer; none ends those that wait.
    void SetDelay(std::chrono::milliseconds delay);
    void SetRecording(bool recording);
    std::vector<LoopMessage> TakeSent();
    void SetVolume(std::uint32_t volume);
    std::uint32_t Volume() const;

private:
    struct Receiver {
        const void* owner;
        MessageReceiver call;
    };

    /// Takes a message in, after the delay, or says why not.
    ResultCode Record(std::span<const std::uint8_t> message);

    mutable std::mutex mutex_;
    bool present_ = true;
    ResultCode nextFailure_ = kNoError;
    std::chrono::milliseconds delay_{0};
    std::condition_variable noDelay_;
    bool recording_ = false;
    std::vector<LoopMessage> sent_;
    std::uint32_t volume_ = 0xFFFF;
    // Apart from the rest, so that a receiver may ask the cable
    std::mutex receiversMutex_;
    std::vector<Receiver> receivers_;
};

} // namespace tracksmith::midi::loop
