#pragma once

#include <chrono>
#include <memory>

namespace tracksmith::system {

/// Time on the steady clock, in its full resolution.
using SteadyTime = std::chrono::steady_clock::time_point;

/// Lets one thread sleep until an exact moment, and other threads wake it before. Created anywhere.
class AlarmClock {
public:
    AlarmClock();
    AlarmClock(const AlarmClock&) = delete;
    AlarmClock& operator=(const AlarmClock&) = delete;
    ~AlarmClock();

    /// Sleeps until `deadline` or until Ring, and never ends before without a Ring. A Ring since
    /// the last sleep ends it at once. One thread only. Never throws.
    void SleepUntil(SteadyTime deadline) noexcept;
    /// The same without a deadline.
    void Sleep() noexcept;
    /// Ends the sleep of the other thread, or the next one. Any thread; never blocks for long.
    void Ring() noexcept;

private:
    struct Bell;
    std::unique_ptr<Bell> bell_;
};

/// Asks the system to wake the calling thread as exactly as it can when it sleeps, before other
/// threads where the user may have that. For threads that sleep most of the time. Without effect
/// where the system does not grant it.
void WakeThisThreadExactly() noexcept;

/// Processor time that the whole program has used so far.
std::chrono::nanoseconds ProcessorTime() noexcept;

} // namespace tracksmith::system
