#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

#include "player/stopwatch.h"

namespace tracksmith::test {

/// A stopwatch that only moves when the test says so. The playback thread runs for real; time jumps
/// from one of its deadlines to the next.
class FakeStopwatch final : public player::Stopwatch {
public:
    std::int64_t ElapsedUs() const noexcept override { return nowUs_; }
    void SleepUntil(std::int64_t deadlineUs) noexcept override {
        std::unique_lock lock(mutex_);
        deadlineUs_ = deadlineUs;
        sleeping_ = true;
        changed_.notify_all();
        changed_.wait(lock, [this] { return woken_ || nowUs_ >= deadlineUs_; });
        sleeping_ = false;
        woken_ = false;
        ++sleeps_;
    }
    void Wake() noexcept override {
        const std::lock_guard lock(mutex_);
        woken_ = true;
        changed_.notify_all();
    }

    /// Lets the thread do everything that is due until `us`. No time passes while ports still send.
    void RunUntil(std::int64_t us) {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [this] { return sleeping_ && !woken_ && nowUs_ < deadlineUs_; });
            awaitSending();
            if (deadlineUs_ > us) {
                nowUs_ = us > nowUs_ ? us : nowUs_.load();
                return;
            }
            nowUs_ = deadlineUs_ + latenessUs;
            changed_.notify_all();
        }
    }
    /// Moves the time on, waking the thread when it is due, and does not wait for it.
    void JumpTo(std::int64_t us) {
        const std::lock_guard lock(mutex_);
        nowUs_ = us;
        changed_.notify_all();
    }
    /// Moves the time on without waking anybody, as when a driver is slow.
    void Pass(std::int64_t us) { nowUs_ += us; }
    /// How often the thread has slept.
    std::int64_t Sleeps() {
        const std::lock_guard lock(mutex_);
        return sleeps_;
    }

    /// Waits until the ports have sent what they were given.
    std::function<void()> awaitSending = [] {};
    /// How late the thread wakes up.
    std::int64_t latenessUs = 0;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::atomic<std::int64_t> nowUs_ = 0;
    std::int64_t deadlineUs_ = 0;
    std::int64_t sleeps_ = 0;
    bool sleeping_ = false;
    bool woken_ = false;
};

} // namespace tracksmith::test
