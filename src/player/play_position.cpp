#include "player/play_position.h"

#include <utility>

namespace tracksmith::player {

PlayPosition::PlayPosition(const Stopwatch& stopwatch)
    : stopwatch_(stopwatch), map_(std::make_shared<song::TimeMap>()) {}

std::int64_t PlayPosition::UsLocked() const {
    return running_ ? stopwatch_.ElapsedUs() - startOffsetUs_ : restingUs_;
}

std::int64_t PlayPosition::Us() const {
    const std::lock_guard lock(mutex_);
    return UsLocked();
}

std::shared_ptr<const song::TimeMap> PlayPosition::Map() const {
    const std::lock_guard lock(mutex_);
    return map_;
}

PlayPlace PlayPosition::Place() const {
    const std::lock_guard lock(mutex_);
    const std::int64_t us = UsLocked();
    return {us / 1000, us, map_};
}

std::int64_t PlayPosition::MomentOf(std::int64_t positionMs) const {
    const std::lock_guard lock(mutex_);
    return startOffsetUs_ + positionMs * 1000;
}

void PlayPosition::Run() {
    const std::lock_guard lock(mutex_);
    if (!running_) {
        startOffsetUs_ = stopwatch_.ElapsedUs() - restingUs_;
        running_ = true;
    }
}

void PlayPosition::Rest() {
    const std::lock_guard lock(mutex_);
    restingUs_ = UsLocked();
    running_ = false;
}

void PlayPosition::MoveLocked(std::int64_t us) {
    restingUs_ = us;
    startOffsetUs_ = stopwatch_.ElapsedUs() - us;
}

void PlayPosition::MoveTo(std::int64_t us) {
    const std::lock_guard lock(mutex_);
    MoveLocked(us);
}

void PlayPosition::MoveTo(std::int64_t us, std::shared_ptr<const song::TimeMap>& map) {
    const std::lock_guard lock(mutex_);
    MoveLocked(us);
    std::swap(map_, map);
}

} // namespace tracksmith::player
