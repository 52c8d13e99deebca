#include "player/pass_state.h"

#include <algorithm>
#include <utility>

namespace tracksmith::player {
namespace {

// How often a pass is looked at that has overstayed but was not in a driver: it will end at once.
constexpr std::chrono::milliseconds kLook{1};

} // namespace

bool PassState::Allow() {
    std::int32_t expected = kStateStopped;
    return state_.compare_exchange_strong(expected, kStateIdle);
}

PassState::Halt PassState::Forbid(std::chrono::milliseconds patience, bool giveUp) {
    using Clock = std::chrono::steady_clock;
    Halt halt;
    halt.wasPlaying = state_.exchange(kStateStopped) != kStateStopped;
    std::unique_lock lock(mutex_);
    const auto limit = Clock::now() + (waitedInVain_ ? std::chrono::milliseconds(0) : patience);
    Place place = place_;
    while (place == Place::Song || (place == Place::Driver && Clock::now() < limit)) {
        ended_.wait_until(lock, std::max(limit, Clock::now() + kLook));
        place = place_;
    }
    if (place == Place::Driver) {
        waitedInVain_ = true;
        if (giveUp && !place_.compare_exchange_strong(place, Place::GivenUp)) {
            // It has come back at the last moment, and ends now.
            lock.unlock();
            Halt again = Forbid(patience, giveUp);
            again.wasPlaying = halt.wasPlaying;
            return again;
        }
    }
    halt.ended = place == Place::None;
    halt.free = place != Place::Driver || giveUp;
    return halt;
}

bool PassState::Stuck() const {
    const std::lock_guard lock(mutex_);
    return waitedInVain_ && place_ != Place::None;
}

bool PassState::Begin() {
    // Under the lock, so that whoever stops sees either the pass or that none can begin.
    const std::lock_guard lock(mutex_);
    std::int32_t expected = kStateIdle;
    const bool begun = state_.compare_exchange_strong(expected, kStatePass);
    place_ = begun ? Place::Song : Place::None;
    return begun;
}

bool PassState::End() {
    std::int32_t expected = kStatePass;
    state_.compare_exchange_strong(expected, kStateIdle);
    const std::lock_guard lock(mutex_);
    place_ = Place::None;
    ended_.notify_all();
    return std::exchange(waitedInVain_, false);
}

bool PassState::StopInPass() {
    std::int32_t expected = kStatePass;
    return state_.compare_exchange_strong(expected, kStateStopped);
}

bool PassState::LeaveDriver() {
    Place expected = Place::Driver;
    return place_.compare_exchange_strong(expected, Place::Song);
}

} // namespace tracksmith::player
