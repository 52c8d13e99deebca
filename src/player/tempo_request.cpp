#include "player/tempo_request.h"

#include <utility>

namespace tracksmith::player {

void TempoRequest::Put(std::shared_ptr<const song::TimeMap> map, std::int32_t offset) {
    const std::lock_guard lock(mutex_);
    std::swap(map_, map);
    offset_ = offset;
    tempoChanged_.store(true, std::memory_order_release);
}

bool TempoRequest::WaitUntilDone(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    return done_.wait_for(lock, patience, [this] { return !tempoChanged_.load(); });
}

bool TempoRequest::Withdraw() {
    const std::lock_guard lock(mutex_);
    return tempoChanged_.exchange(false);
}

} // namespace tracksmith::player
