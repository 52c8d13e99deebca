#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tracksmith::midi::jack {

/// A queue of whole messages between one writing and one reading thread that neither locks nor
/// allocates after its construction. Positions count the bytes that ever went in.
class MessageRing {
public:
    struct Head {
        std::uint32_t size = 0;
        /// Whatever the writer gave.
        std::uint64_t time = 0;
    };

    /// `capacity` in bytes, a power of two; a message takes 12 bytes more than its length.
    explicit MessageRing(std::size_t capacity);

    /// Appends a message, or changes nothing and returns false when it does not fit. Writer only.
    bool Put(std::span<const std::uint8_t> message, std::uint64_t time) noexcept;
    /// Position behind the last message. Any thread.
    std::uint64_t Written() const noexcept { return written_.load(std::memory_order_acquire); }

    /// Looks at the oldest message; false when there is none. Reader only.
    bool Peek(Head& head) const noexcept;
    /// Copies the oldest message, whose size Peek has told, to `target` and removes it. Reader
    /// only.
    void Take(std::uint8_t* target) noexcept;
    /// Removes all messages before a position that Written has returned. Reader only.
    void DropUntil(std::uint64_t position) noexcept;
    /// True when the reader has removed all messages. Any thread.
    bool Empty() const noexcept;

private:
    void CopyIn(std::uint64_t position, const void* source, std::size_t size) noexcept;
    void CopyOut(std::uint64_t position, void* target, std::size_t size) const noexcept;

    std::vector<std::uint8_t> bytes_;
    std::atomic<std::uint64_t> written_{0};
    std::atomic<std::uint64_t> read_{0};
};

} // namespace tracksmith::midi::jack
