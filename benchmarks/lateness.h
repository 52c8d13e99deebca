#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iomanip>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "timing_driver.h"

#include "player/player.h"

namespace tracksmith::benchmarks {

using namespace std::chrono_literals;

/// How late messages came, in microseconds.
struct Lateness {
    std::vector<double> us;

    void Add(Clock::duration late) {
        us.push_back(std::chrono::duration<double, std::micro>(late).count());
    }
    double Share(double share) const {
        std::vector<double> sorted = us;
        std::sort(sorted.begin(), sorted.end());
        const auto last = static_cast<double>(sorted.size() - 1);
        return sorted.empty() ? 0 : sorted[static_cast<std::size_t>(share * last)];
    }
    std::ptrdiff_t Early() const {
        return std::count_if(us.begin(), us.end(), [](double late) { return late < 0; });
    }
};

inline void PrintLateness(std::ostream& out, const char* name, const Lateness& lateness) {
    out << "  " << std::left << std::setw(24) << name << std::right << std::fixed
        << std::setprecision(0) << " p50 " << std::setw(6) << lateness.Share(0.5) << " us  p99 "
        << std::setw(6) << lateness.Share(0.99) << " us  most " << std::setw(6) << lateness.Share(1)
        << " us  early " << lateness.Early() << " of " << lateness.us.size() << '\n';
}

/// Sends the same messages from a loop that sleeps a millisecond between two looks.
inline Lateness PollLoop(int steps, int stepMs) {
    Lateness lateness;
    const Clock::time_point start = Clock::now();
    for (int next = 0; next < steps;) {
        const Clock::time_point now = Clock::now();
        for (Clock::time_point due = start + (next + 1) * stepMs * 1ms; next < steps && due <= now;
             due = start + (++next + 1) * stepMs * 1ms) {
            lateness.Add(now - due);
        }
        std::this_thread::sleep_for(1ms);
    }
    return lateness;
}

/// The moment at which the playing position was 0, never before it.
inline Clock::time_point StartOf(const player::TMidiPlayer& player) {
    Clock::time_point start = Clock::time_point::max();
    for (int i = 0; i < 1000; ++i) {
        const auto position = std::chrono::microseconds(player.Place().us);
        start = std::min(start, Clock::now() - position);
    }
    return start;
}

/// A figure measured although the player did not do it would say nothing.
inline void Require(bool done, const char* what) {
    if (!done) {
        throw std::runtime_error(std::string("the player refuses to ") + what);
    }
}

} // namespace tracksmith::benchmarks
