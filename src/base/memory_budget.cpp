#include "base/memory_budget.h"

#include <algorithm>

#include "base/system/virtual_memory.h"

namespace tracksmith {

std::uint64_t SongMemoryBudget() {
    constexpr std::uint64_t kMost = 4ULL << 30;
    return std::min(system::PhysicalMemoryBytes() / 2, kMost);
}

} // namespace tracksmith
