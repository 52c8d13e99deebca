#include "midi/backends/winmm/wineloop/schedule.h"

#include <thread>
#include <utility>

namespace wineloop {

void Schedule::Add(std::chrono::milliseconds delay, Action action) {
    if (!working_) {
        working_ = true;
        // Lives until the program ends: a thread cannot be waited for while its library is
        // unloaded.
        std::thread([this] { Work(); }).detach();
    }
    actions_.emplace(Clock::now() + delay, std::move(action));
    wake_.notify_one();
}

void Schedule::RunDue() {
    const Clock::time_point now = Clock::now();
    while (!actions_.empty() && actions_.begin()->first <= now) {
        const auto next = actions_.extract(actions_.begin());
        next.mapped()();
    }
}

void Schedule::Work() {
    std::unique_lock hold(lock_);
    while (true) {
        RunDue();
        if (actions_.empty()) {
            wake_.wait(hold);
        } else {
            const Clock::time_point due = actions_.begin()->first;
            wake_.wait_until(hold, due);
        }
    }
}

} // namespace wineloop
