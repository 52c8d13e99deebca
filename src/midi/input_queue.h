#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// What a driver delivered: a short message, or a filled header.
struct QueueEntry {
    /// Milliseconds since the input was started.
    std::uint64_t time = 0;
    /// Status in the low byte, then the two data bytes.
    std::uint64_t shortData = 0;
    /// Null for a short message.
    MidiHeader* header = nullptr;
};

/// Ring between one thread that puts (the driver's) and one that takes (the port's own), without a
/// lock.
class InputQueue {
public:
    explicit InputQueue(std::uint16_t capacity);

    std::uint16_t Capacity() const { return capacity_; }
    /// Entries that wait. From any thread.
    std::uint16_t MessageCount() const { return messageCount_.load(std::memory_order_acquire); }
    /// False, and the entry is lost, when the queue is full.
    bool Put(const QueueEntry& entry);
    /// False when the queue is empty.
    bool Take(QueueEntry& entry);

private:
    std::size_t Next(std::size_t position) const;

    std::vector<QueueEntry> entries_;
    std::uint16_t capacity_;
    std::size_t writePosition_ = 0;
    std::size_t readPosition_ = 0;
    std::atomic<std::uint16_t> messageCount_ = 0;
};

} // namespace tracksmith::midi
