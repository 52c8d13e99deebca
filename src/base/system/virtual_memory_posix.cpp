#include <sys/mman.h>
#include <unistd.h>

#include "base/system/virtual_memory.h"

namespace tracksmith::system {

void* ReserveAddressRange(std::size_t bytes) {
    void* range =
        mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return range == MAP_FAILED ? nullptr : range;
}

void ReleaseAddressRange(void* range, std::size_t bytes) {
    munmap(range, bytes);
}

bool CommitMemory(void* address, std::size_t bytes) {
    if (mprotect(address, bytes, PROT_READ | PROT_WRITE) != 0) {
        return false;
    }
#ifdef MADV_HUGEPAGE
    // Large songs are read from end to end: large pages cost a fraction of the faults and of the
    // misses of the address cache. Where the system has none to give, nothing happens.
    constexpr std::size_t kFewestForLarge = std::size_t{4} << 20;
    if (bytes >= kFewestForLarge) {
        madvise(address, bytes, MADV_HUGEPAGE);
    }
#endif
#ifdef MADV_POPULATE_WRITE
    // A block of events gets its pages in one call, which costs less than a fault for each of them.
    // An older kernel does not know it, and then they come one by one, as they do for what is too
    // large to be used at once.
    constexpr std::size_t kFewest = std::size_t{256} << 10;
    constexpr std::size_t kMost = std::size_t{16} << 20;
    if (bytes >= kFewest && bytes <= kMost) {
        madvise(address, bytes, MADV_POPULATE_WRITE);
    }
#endif
    return true;
}

void DecommitMemory(void* address, std::size_t bytes) {
    madvise(address, bytes, MADV_DONTNEED);
    mprotect(address, bytes, PROT_NONE);
}

std::uint64_t PhysicalMemoryBytes() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0) {
        return 1ULL << 30;
    }
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

} // namespace tracksmith::system
