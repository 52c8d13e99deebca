#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

#include "song/time_map_record.h"

namespace tracksmith::player {

/// Hands a new tempo from the owner's thread to the playback thread: the flag "tempo changed" with
/// what belongs to it.
class TempoRequest {
public:
    /// Owner's thread: leaves a request, instead of one that was not taken yet.
    void Put(std::shared_ptr<const song::TimeMap> map, std::int32_t offset);
    /// Owner's thread: waits until the request has been carried out. False when it was not within
    /// `patience`.
    bool WaitUntilDone(std::chrono::milliseconds patience);
    /// Owner's thread: takes the request back. False when it has been carried out already.
    bool Withdraw();

    /// Carries a waiting request out: calls `apply(map, offset)`, which may exchange the map for
    /// another one; no memory is released here. At once when there is none.
    template <typename Apply>
    void Take(Apply&& apply) {
        if (!tempoChanged_.load(std::memory_order_acquire)) {
            return;
        }
        const std::lock_guard lock(mutex_);
        if (tempoChanged_.exchange(false)) {
            apply(map_, offset_);
            done_.notify_all();
        }
    }

private:
    std::atomic<bool> tempoChanged_ = false;
    std::mutex mutex_;
    std::condition_variable done_;
    std::shared_ptr<const song::TimeMap> map_;
    std::int32_t offset_ = 0;
};

} // namespace tracksmith::player
