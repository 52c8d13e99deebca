#include "player/output_port.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace tracksmith::player {
namespace {

// What a MIDI cable carries in a second (MIDI 1.0: 31,250 baud, ten bits a byte).
constexpr std::int64_t kCableBytesPerSecond = 3125;

std::int64_t CableUs(std::size_t bytes) {
    return static_cast<std::int64_t>(bytes) * 1'000'000 / kCableBytesPerSecond;
}

} // namespace

OutputPort::OutputPort(midi::MidiOutputDriver& driver, std::string productName,
                       bool softwareInstrument, const Stopwatch& stopwatch,
                       std::function<void()> onTrouble)
    : driver_(driver),
      output_(driver),
      productName_(std::move(productName)),
      softwareInstrument_(softwareInstrument),
      stopwatch_(stopwatch),
      onTrouble_(std::move(onTrouble)) {}

// Waits a bounded time: whoever holds the lock may be stuck in a dead driver.
bool OutputPort::Lock() noexcept {
    constexpr auto kPause = std::chrono::microseconds(200);
    for (std::int64_t waited = 0; waited < kMostSendUs; waited += kPause.count()) {
        if (mutex_.try_lock()) {
            return true;
        }
        std::this_thread::sleep_for(kPause);
    }
    return mutex_.try_lock();
}

bool OutputPort::Open(std::uint32_t device) noexcept {
    if (!Lock()) {
        return false;
    }
    const std::lock_guard lock(mutex_, std::adopt_lock);
    try {
        sysex_.reserve(kMostSysex);
        if (output_.State() == midi::MidiOutputState::mosClosed) {
            output_.SetDeviceID(device);
        }
        open_ = output_.Open();
    } catch (...) {
        open_ = false;
    }
    lost_ = lost_ && !open_;
    return open_;
}

bool OutputPort::Close() noexcept {
    if (!Lock()) {
        return false;
    }
    const std::lock_guard lock(mutex_, std::adopt_lock);
    open_ = false;
    try {
        output_.Close();
    } catch (...) {
        // The port is closed all the same, and a failing device has been told of already.
    }
    return true;
}

template <typename Put>
bool OutputPort::Send(std::int64_t mostUs, Put&& put) noexcept {
    if (!open_ || lost_) {
        return false;
    }
    if (!Lock()) {
        MarkLost();
        return false;
    }
    const std::lock_guard lock(mutex_, std::adopt_lock);
    const std::int64_t start = stopwatch_.ElapsedUs();
    try {
        put();
        sent_.fetch_add(1, std::memory_order_relaxed);
    } catch (...) {
        MarkLost();
        return false;
    }
    if (stopwatch_.ElapsedUs() - start > mostUs) {
        MarkLost();
    }
    return true;
}

bool OutputPort::SendShort(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept {
    return Send(kMostSendUs, [&] { output_.PutShort(status, data1, data2); });
}

bool OutputPort::SendSysex(std::uint8_t status, std::span<const std::uint8_t> data) noexcept {
    if (data.size() + 1 > kMostSysex) {
        if (!sysexTold_.exchange(true)) {
            sysexUntold_ = true;
            onTrouble_();
        }
        return false;
    }
    return Send(kMostSendUs + CableUs(data.size()), [&] {
        // Within what Open has reserved.
        sysex_.assign(1, status);
        sysex_.insert(sysex_.end(), data.begin(), data.end());
        output_.PutLong(sysex_);
    });
}

void OutputPort::MarkLost() noexcept {
    if (!lost_.exchange(true)) {
        timesLost_.fetch_add(1, std::memory_order_relaxed);
        lossUntold_ = true;
        onTrouble_();
    }
}

OutputPort::Trouble OutputPort::TakeTrouble() {
    Trouble trouble{lossUntold_.exchange(false), sysexUntold_.exchange(false)};
    // A device that is there but keeps failing is told of once.
    trouble.lost = trouble.lost && std::exchange(lossMayBeTold_, false);
    return trouble;
}

void OutputPort::SetPresent(bool present) {
    lossMayBeTold_ = lossMayBeTold_ || (present && !present_);
    present_ = present;
}

} // namespace tracksmith::player
