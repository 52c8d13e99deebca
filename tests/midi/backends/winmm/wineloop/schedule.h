#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>

namespace wineloop {

/// What the driver's own thread is to do and when. Add and RunDue are called under the lock, which
/// the thread holds too while it works, so that a device that has been closed calls nobody back.
class Schedule {
public:
    using Action = std::function<void()>;

    explicit Schedule(std::mutex& lock) : lock_(lock) {}
    /// What has the same time is done in the order of its adding.
    void Add(std::chrono::milliseconds delay, Action action);
    /// Does all that is due now.
    void RunDue();

private:
    using Clock = std::chrono::steady_clock;

    void Work();

    std::mutex& lock_;
    std::condition_variable wake_;
    std::multimap<Clock::time_point, Action> actions_;
    bool working_ = false;
};

} // namespace wineloop
