#include <algorithm>
#include <array>
#include <utility>

#include "player/output_port.h"
#include "song/midi_event.h"

// How messages go through an output port.

namespace tracksmith::player {
namespace {

// What a MIDI cable carries in a second (MIDI 1.0: 31,250 baud, ten bits a byte).
constexpr std::int64_t kCableBytesPerSecond = 3125;

std::int64_t CableUs(std::size_t bytes) {
    return static_cast<std::int64_t>(bytes) * 1'000'000 / kCableBytesPerSecond;
}

bool IsLong(std::span<const std::uint8_t> message) {
    return message[0] == song::kSystemExclusive || message[0] == song::kEscape;
}

// Codes of a device that has gone or of a system that does not run.
bool MeansLoss(midi::ResultCode result) {
    constexpr std::array kLosses{midi::kUnspecifiedError, midi::kBadDeviceId, midi::kInvalidHandle,
                                 midi::kNoDriver, midi::kNoDevice};
    return std::ranges::find(kLosses, result) != kLosses.end();
}

} // namespace

bool OutputPort::SendShort(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept {
    const std::array<std::uint8_t, 2> data{data1, data2};
    const bool given = Give(status, data);
    work_.notify_one();
    return given;
}

bool OutputPort::SendSysex(std::uint8_t status, std::span<const std::uint8_t> data) noexcept {
    const bool given = Give(status, data);
    work_.notify_one();
    return given;
}

bool OutputPort::SendShortNow(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                              PassState& pass) noexcept {
    const std::array<std::uint8_t, 2> data{data1, data2};
    return GiveInPass(status, data, pass);
}

bool OutputPort::SendSysexNow(std::uint8_t status, std::span<const std::uint8_t> data,
                              PassState& pass) noexcept {
    return GiveInPass(status, data, pass);
}

bool OutputPort::Give(std::uint8_t status, std::span<const std::uint8_t> data) noexcept {
    if (!open_ || lost_) {
        return false;
    }
    if (data.size() + 1 > kMostSysex) {
        if (!sysexTold_.exchange(true)) {
            Tell(sysexUntold_);
        }
        return false;
    }
    if (Hanging()) {
        MarkLost();
        return false;
    }
    const std::lock_guard lock(mutex_);
    return queue_.Put(status, data);
}

// What the song holds has been copied before the driver is called.
bool OutputPort::GiveInPass(std::uint8_t status, std::span<const std::uint8_t> data,
                            PassState& pass) noexcept {
    if (!Give(status, data)) {
        return true;
    }
    pass.EnterDriver();
    bool sent = false;
    if (const std::unique_lock sending(sending_, std::try_to_lock); sending) {
        holdsPass_ = true;
        sent = Drain();
        holdsPass_ = false;
    }
    if (!sent) {
        work_.notify_one();
    }
    return pass.LeaveDriver();
}

bool OutputPort::WaitUntilSent(std::chrono::steady_clock::time_point deadline) noexcept {
    std::unique_lock lock(mutex_);
    return idle_.wait_until(lock, deadline,
                            [this] { return lost_ || Hanging() || (queue_.Empty() && !inHand_); });
}

// Sends what waits, with `sending_` held. False when the driver is busy: it is to be called again
// shortly.
bool OutputPort::Drain() noexcept {
    while (TakeNext()) {
        const midi::ResultCode result = Transmit();
        if (result == midi::kNotReady && MayTryAgain()) {
            const std::lock_guard lock(mutex_);
            tryAgain_ = true;
            return false;
        }
        Judge(result);
        hasCurrent_ = false;
    }
    return true;
}

bool OutputPort::TakeNext() noexcept {
    const std::lock_guard lock(mutex_);
    tryAgain_ = false;
    if (lost_ || !open_) {
        queue_.Clear();
        hasCurrent_ = false;
    } else if (!hasCurrent_) {
        hasCurrent_ = queue_.Take(current_);
        currentSinceUs_ = stopwatch_->ElapsedUs();
    }
    inHand_ = hasCurrent_;
    if (!inHand_) {
        idle_.notify_all();
    }
    return hasCurrent_;
}

midi::ResultCode OutputPort::Transmit() noexcept {
    const std::int64_t start = stopwatch_->ElapsedUs();
    const std::int64_t most = kMostSendUs + CableUs(current_.size());
    busyMostUs_ = most;
    busySinceUs_ = start;
    const midi::ResultCode result = IsLong(current_)
                                        ? output_.TryLong(current_)
                                        : output_.TryShort(current_[0], current_[1], current_[2]);
    busySinceUs_ = -1;
    if (stopwatch_->ElapsedUs() - start > most) {
        MarkLost();
    }
    return result;
}

// A driver may be busy as long as the cable is with what it took before.
bool OutputPort::MayTryAgain() const noexcept {
    const std::int64_t since = std::max(currentSinceUs_, cableFreeUs_);
    return !lost_ && stopwatch_->ElapsedUs() - since <= kMostSendUs + CableUs(current_.size());
}

void OutputPort::Judge(midi::ResultCode result) noexcept {
    if (result == midi::kNoError) {
        sent_.fetch_add(1, std::memory_order_relaxed);
        provenGood_ = provenGood_ || !lost_;
        if (IsLong(current_)) {
            cableFreeUs_ =
                std::max(cableFreeUs_, stopwatch_->ElapsedUs()) + CableUs(current_.size());
        }
    } else if (MeansLoss(result) || result == midi::kNotReady) {
        MarkLost();
    } else if (!refusalTold_.exchange(true)) {
        Tell(refusalUntold_);
    }
}

} // namespace tracksmith::player
