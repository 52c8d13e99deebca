#pragma once

namespace tracksmith::system {

/// The system's calls that begin and end a finer period of its timers, in milliseconds.
struct PeriodCalls {
    unsigned (*begin)(unsigned milliseconds) = nullptr;
    unsigned (*end)(unsigned milliseconds) = nullptr;
};

/// Puts other calls in place of the system's and returns those that were there; for tests. Only
/// while no FinePeriod is held.
PeriodCalls ReplacePeriodCalls(const PeriodCalls& calls);

/// Lets sleeps end within a millisecond while it is held. That costs the whole machine power, so it
/// is held only while something plays. One thread at a time.
class FinePeriod {
public:
    FinePeriod() = default;
    FinePeriod(const FinePeriod&) = delete;
    FinePeriod& operator=(const FinePeriod&) = delete;
    ~FinePeriod() { Release(); }

    void Hold() noexcept;
    void Release() noexcept;

private:
    bool held_ = false;
};

} // namespace tracksmith::system
