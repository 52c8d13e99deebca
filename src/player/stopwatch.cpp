#include "player/stopwatch.h"

namespace tracksmith::player {

std::int64_t SteadyStopwatch::ElapsedUs() const noexcept {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                 start_)
        .count();
}

void SteadyStopwatch::SleepUntil(std::int64_t deadlineUs) noexcept {
    if (deadlineUs == kForever) {
        alarm_.Sleep();
    } else {
        alarm_.SleepUntil(start_ + std::chrono::microseconds(deadlineUs));
    }
}

} // namespace tracksmith::player
