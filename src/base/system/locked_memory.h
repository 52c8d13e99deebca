#pragma once

#include <cstddef>

namespace tracksmith::system {

/// Memory that a device driver may keep a pointer to: on Windows a movable block of the global
/// heap, locked in place, elsewhere ordinary memory.
struct LockedBlock {
    /// Names the block to FreeLocked; null when there is none.
    void* handle = nullptr;
    /// Where the memory lies, aligned for every type.
    void* pointer = nullptr;
};

/// A block of `bytes` zero bytes. Raises std::bad_alloc.
LockedBlock AllocateLocked(std::size_t bytes);

/// Unlocks and frees the block; null is ignored.
void FreeLocked(void* handle) noexcept;

} // namespace tracksmith::system
