#pragma once

#include <cstddef>
#include <functional>
#include <span>

namespace tracksmith {

/// Threads that are worth starting for work over `bytes` of memory: 1 for what one thread does in
/// about a millisecond, at most 4, since more only wait for the memory.
std::size_t ThreadsFor(std::size_t bytes);

/// Runs `work(0)` to `work(count - 1)`, each once, in any order, on up to `threads` threads of
/// which the calling one is the first. Returns when all have ended; the first exception of any is
/// passed on then, and work that had not begun is left out.
void ParallelFor(std::size_t count, std::size_t threads,
                 const std::function<void(std::size_t)>& work);

/// One block of memory that is to be copied; the two places do not overlap.
struct MemoryCopy {
    void* to = nullptr;
    const void* from = nullptr;
    std::size_t bytes = 0;
};

/// Copies all blocks; many bytes on several threads and past the caches. Returns when all is done.
/// Throws std::bad_alloc before anything is copied.
void CopyLarge(std::span<const MemoryCopy> blocks);

} // namespace tracksmith
