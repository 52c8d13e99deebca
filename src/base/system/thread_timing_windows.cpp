#include <algorithm>
#include <cstdint>
#include <windows.h>

#include "base/system/fine_period_windows.h"
#include "base/system/thread_timing.h"

// Known since Windows 10, version 1803, but not to every set of headers.
#ifndef CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
#define CREATE_WAITABLE_TIMER_HIGH_RESOLUTION 0x00000002
#endif

namespace tracksmith::system {

struct AlarmClock::Bell {
    HANDLE rung = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HANDLE timer = CreateTimer();
    // Held while somebody sleeps until a moment, which is while a song plays.
    FinePeriod period;

    Bell() = default;
    Bell(const Bell&) = delete;
    Bell& operator=(const Bell&) = delete;
    ~Bell() {
        CloseHandle(rung);
        CloseHandle(timer);
    }

    static HANDLE CreateTimer() {
        const HANDLE exact = CreateWaitableTimerExW(
            nullptr, nullptr, CREATE_WAITABLE_TIMER_HIGH_RESOLUTION, TIMER_ALL_ACCESS);
        return exact != nullptr ? exact : CreateWaitableTimerW(nullptr, FALSE, nullptr);
    }
};

AlarmClock::AlarmClock() : bell_(std::make_unique<Bell>()) {}
AlarmClock::~AlarmClock() = default;

void AlarmClock::SleepUntil(SteadyTime deadline) noexcept {
    bell_->period.Hold();
    // The timer counts in steps of 100 ns; negative means from now. It may end a little early.
    for (;;) {
        const auto left = deadline - std::chrono::steady_clock::now();
        const auto steps = std::chrono::duration_cast<
            std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>>(left);
        if (left.count() <= 0) {
            // A Ring that came before must not end the next sleep.
            WaitForSingleObject(bell_->rung, 0);
            return;
        }
        LARGE_INTEGER due;
        due.QuadPart = -std::max<std::int64_t>(steps.count(), 1);
        SetWaitableTimer(bell_->timer, &due, 0, nullptr, nullptr, FALSE);
        const HANDLE handles[] = {bell_->rung, bell_->timer};
        if (WaitForMultipleObjects(2, handles, FALSE, INFINITE) != WAIT_OBJECT_0 + 1) {
            return;
        }
    }
}

void AlarmClock::Sleep() noexcept {
    bell_->period.Release();
    WaitForSingleObject(bell_->rung, INFINITE);
}

void AlarmClock::Ring() noexcept {
    SetEvent(bell_->rung);
}

void WakeThisThreadExactly() noexcept {
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL);
}

std::chrono::nanoseconds ProcessorTime() noexcept {
    FILETIME created;
    FILETIME ended;
    FILETIME kernel;
    FILETIME user;
    if (GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user) == 0) {
        return {};
    }
    const auto steps = [](const FILETIME& time) {
        return (static_cast<std::int64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    };
    return std::chrono::nanoseconds((steps(kernel) + steps(user)) * 100);
}

} // namespace tracksmith::system
