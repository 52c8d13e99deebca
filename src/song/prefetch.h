#pragma once

#include <cstddef>

namespace tracksmith::song {

/// Bytes between the place that is worked on and the place that is fetched ahead. The records of a
/// song lie mostly in a row, but a walk along their links gives the processor no hint of it.
inline constexpr std::size_t kPrefetchDistance = 2048;

/// Fetches memory ahead of a walk that only reads. Never faults, whatever lies there.
inline void PrefetchForReading(const void* place) {
    __builtin_prefetch(static_cast<const std::byte*>(place) + kPrefetchDistance, 0);
}

/// Fetches memory ahead of a walk that writes.
inline void PrefetchForWriting(const void* place) {
    __builtin_prefetch(static_cast<const std::byte*>(place) + kPrefetchDistance, 1);
}

} // namespace tracksmith::song
