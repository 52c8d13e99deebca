#include "midi/input_queue.h"

namespace tracksmith::midi {

static_assert(sizeof(void*) != 8 || sizeof(QueueEntry) == 24);

InputQueue::InputQueue(std::uint16_t capacity) : entries_(capacity), capacity_(capacity) {}

std::size_t InputQueue::Next(std::size_t position) const {
    return position + 1 == entries_.size() ? 0 : position + 1;
}

bool InputQueue::Put(const QueueEntry& entry) {
    if (MessageCount() >= capacity_) {
        return false;
    }
    entries_[writePosition_] = entry;
    writePosition_ = Next(writePosition_);
    messageCount_.fetch_add(1, std::memory_order_acq_rel);
    return true;
}

bool InputQueue::Take(QueueEntry& entry) {
    if (MessageCount() == 0) {
        return false;
    }
    entry = entries_[readPosition_];
    readPosition_ = Next(readPosition_);
    messageCount_.fetch_sub(1, std::memory_order_acq_rel);
    return true;
}

} // namespace tracksmith::midi
