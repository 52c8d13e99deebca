#include <condition_variable>
#include <ctime>
#include <mutex>
#include <pthread.h>
#include <sched.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "base/system/thread_timing.h"

namespace tracksmith::system {

struct AlarmClock::Bell {
    std::mutex mutex;
    std::condition_variable condition;
    bool rung = false;
};

AlarmClock::AlarmClock() : bell_(std::make_unique<Bell>()) {}
AlarmClock::~AlarmClock() = default;

void AlarmClock::SleepUntil(SteadyTime deadline) noexcept {
    std::unique_lock lock(bell_->mutex);
    bell_->condition.wait_until(lock, deadline, [this] { return bell_->rung; });
    bell_->rung = false;
}

void AlarmClock::Sleep() noexcept {
    std::unique_lock lock(bell_->mutex);
    bell_->condition.wait(lock, [this] { return bell_->rung; });
    bell_->rung = false;
}

void AlarmClock::Ring() noexcept {
    const std::lock_guard lock(bell_->mutex);
    bell_->rung = true;
    bell_->condition.notify_one();
}

void WakeThisThreadExactly() noexcept {
    constexpr int kAboveLowest = 4;
#ifdef __linux__
    // Without this the kernel may delay every wake-up by 50 microseconds to save power.
    constexpr unsigned long kSmallestSlackNs = 1;
    prctl(PR_SET_TIMERSLACK, kSmallestSlackNs, 0UL, 0UL, 0UL);
#endif
    // Where the user may, as members of audio groups may: before all ordinary threads, behind those
    // that move audio.
    sched_param priority{};
    priority.sched_priority = sched_get_priority_min(SCHED_RR) + kAboveLowest;
    pthread_setschedparam(pthread_self(), SCHED_RR, &priority);
}

std::chrono::nanoseconds ProcessorTime() noexcept {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace tracksmith::system
