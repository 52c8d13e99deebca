#pragma once

#include <cstdint>
#include <limits>

#include "base/system/thread_timing.h"

namespace tracksmith::player {

/// The clock that everything is played by: free-running, never set, in microseconds since it was
/// made (64 bits: it never overflows). The playback thread also sleeps on it.
class Stopwatch {
public:
    /// A deadline that never comes.
    static constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();

    virtual ~Stopwatch() = default;
    /// Microseconds since the stopwatch was started. Any thread.
    virtual std::int64_t ElapsedUs() const noexcept = 0;
    /// Sleeps until ElapsedUs() is at least `deadlineUs`, or until Wake; a Wake since the last
    /// sleep ends it at once. Playback thread only.
    virtual void SleepUntil(std::int64_t deadlineUs) noexcept = 0;
    /// Ends the sleep of the playback thread. Any thread.
    virtual void Wake() noexcept = 0;
    /// Called once by the thread that is going to sleep.
    virtual void PrepareThread() noexcept {}
};

/// The system's steady clock.
class SteadyStopwatch final : public Stopwatch {
public:
    std::int64_t ElapsedUs() const noexcept override;
    void SleepUntil(std::int64_t deadlineUs) noexcept override;
    void Wake() noexcept override { alarm_.Ring(); }
    void PrepareThread() noexcept override { system::WakeThisThreadExactly(); }

private:
    const system::SteadyTime start_ = std::chrono::steady_clock::now();
    system::AlarmClock alarm_;
};

} // namespace tracksmith::player
