#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tracksmith::player {

/// Messages that wait to be sent, in their order. Allocates only in Reserve. Not thread safe.
class SendQueue {
public:
    /// Makes room and drops what waits.
    void Reserve(std::size_t bytes);
    /// Adds a message of a status byte and what follows it. False when there is no room.
    bool Put(std::uint8_t status, std::span<const std::uint8_t> data) noexcept;
    /// Takes the oldest message; `message` must have the capacity for it. False when none waits.
    bool Take(std::vector<std::uint8_t>& message) noexcept;
    bool Empty() const { return used_ == 0; }
    void Clear() { used_ = 0; }

private:
    void Append(std::span<const std::uint8_t> bytes) noexcept;
    void Remove(std::span<std::uint8_t> bytes) noexcept;

    std::vector<std::uint8_t> ring_;
    std::size_t first_ = 0;
    std::size_t used_ = 0;
};

} // namespace tracksmith::player
