#include "audio/message_ring.h"

#include <algorithm>
#include <cstring>

namespace tracksmith::audio {

MessageRing::MessageRing() : bytes_(kCapacity), taken_(kLongestMessage) {}

bool MessageRing::Put(std::span<const std::uint8_t> message, std::int64_t timeUs) {
    const std::scoped_lock lock(putting_);
    const std::size_t position = written_.load(std::memory_order_relaxed);
    const std::size_t used = position - read_.load(std::memory_order_acquire);
    const std::size_t needed = sizeof(Head) + message.size();
    if (message.size() > kLongestMessage || needed > kCapacity - used) {
        return false;
    }
    const Head head{static_cast<std::uint32_t>(message.size()), timeUs};
    CopyIn(position, &head, sizeof(head));
    CopyIn(position + sizeof(head), message.data(), message.size());
    written_.store(position + needed, std::memory_order_release);
    return true;
}

bool MessageRing::PeekTime(std::int64_t& timeUs) const {
    const std::size_t position = read_.load(std::memory_order_relaxed);
    if (position == written_.load(std::memory_order_acquire)) {
        return false;
    }
    Head head{};
    CopyOut(position, &head, sizeof(head));
    timeUs = head.timeUs;
    return true;
}

std::span<const std::uint8_t> MessageRing::Take() {
    const std::size_t position = read_.load(std::memory_order_relaxed);
    Head head{};
    CopyOut(position, &head, sizeof(head));
    CopyOut(position + sizeof(head), taken_.data(), head.length);
    read_.store(position + sizeof(head) + head.length, std::memory_order_release);
    return std::span(taken_).first(head.length);
}

void MessageRing::CopyIn(std::size_t position, const void* from, std::size_t bytes) {
    const std::size_t start = position % kCapacity;
    const std::size_t first = std::min(bytes, kCapacity - start);
    if (bytes != 0) {
        std::memcpy(bytes_.data() + start, from, first);
        std::memcpy(bytes_.data(), static_cast<const std::uint8_t*>(from) + first, bytes - first);
    }
}

void MessageRing::CopyOut(std::size_t position, void* to, std::size_t bytes) const {
    const std::size_t start = position % kCapacity;
    const std::size_t first = std::min(bytes, kCapacity - start);
    std::memcpy(to, bytes_.data() + start, first);
    std::memcpy(static_cast<std::uint8_t*>(to) + first, bytes_.data(), bytes - first);
}

} // namespace tracksmith::audio
