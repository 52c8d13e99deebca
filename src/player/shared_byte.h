#pragma once

#include <atomic>
#include <cstdint>

namespace tracksmith::player {

/// A byte of the song that one thread writes while the other reads it.
inline std::uint8_t ReadShared(std::uint8_t& byte) {
    return std::atomic_ref(byte).load(std::memory_order_relaxed);
}
inline void WriteShared(std::uint8_t& byte, std::uint8_t value) {
    std::atomic_ref(byte).store(value, std::memory_order_relaxed);
}

} // namespace tracksmith::player
