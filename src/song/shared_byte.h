#pragma once

#include <atomic>
#include <cstdint>

namespace tracksmith::song {

/// Reads a byte of the song that another thread may write meanwhile.
inline std::uint8_t ReadShared(const std::uint8_t& byte) {
    // An atomic reference takes no const object, though nothing is written by loading.
    return std::atomic_ref(const_cast<std::uint8_t&>(byte)).load(std::memory_order_relaxed);
}
/// Writes a byte of the song that another thread may read meanwhile.
inline void WriteShared(std::uint8_t& byte, std::uint8_t value) {
    std::atomic_ref(byte).store(value, std::memory_order_relaxed);
}

} // namespace tracksmith::song
