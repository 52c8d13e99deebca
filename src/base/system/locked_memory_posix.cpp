#include <cstdlib>
#include <new>

#include "base/system/locked_memory.h"

namespace tracksmith::system {

LockedBlock AllocateLocked(std::size_t bytes) {
    void* memory = std::calloc(1, bytes);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return {memory, memory};
}

void FreeLocked(void* handle) noexcept {
    std::free(handle);
}

} // namespace tracksmith::system
