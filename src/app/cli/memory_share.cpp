#include "app/cli/memory_share.h"

#include <algorithm>

namespace tracksmith::cli {

MemoryShare::Part MemoryShare::Take(std::uint64_t wanted) {
    const std::uint64_t bytes = std::min(wanted, total_);
    std::unique_lock lock(mutex_);
    const std::uint64_t turn = asked_++;
    changed_.wait(lock, [&] { return served_ == turn && bytes <= free_; });
    ++served_;
    free_ -= bytes;
    changed_.notify_all();
    return {*this, bytes};
}

void MemoryShare::GiveBack(std::uint64_t bytes) {
    const std::scoped_lock lock(mutex_);
    free_ += bytes;
    changed_.notify_all();
}

} // namespace tracksmith::cli
