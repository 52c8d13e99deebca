#include <sys/mman.h>
#include <unistd.h>

#include "base/system/virtual_memory.h"

namespace tracksmith::system {

void* ReserveAddressRange(std::size_t bytes) {
    void* range =
        mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return range == MAP_FAILED ? nullptr : range;
}

bool CommitMemory(void* address, std::size_t bytes) {
    return mprotect(address, bytes, PROT_READ | PROT_WRITE) == 0;
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
