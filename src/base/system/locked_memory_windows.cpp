#include <new>
#include <windows.h>

#include "base/system/locked_memory.h"

namespace tracksmith::system {

LockedBlock AllocateLocked(std::size_t bytes) {
    HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
    if (handle == nullptr) {
        throw std::bad_alloc();
    }
    void* pointer = GlobalLock(handle);
    if (pointer == nullptr) {
        GlobalFree(handle);
        throw std::bad_alloc();
    }
    return {handle, pointer};
}

void FreeLocked(void* handle) noexcept {
    if (handle != nullptr) {
        GlobalUnlock(handle);
        GlobalFree(handle);
    }
}

} // namespace tracksmith::system
