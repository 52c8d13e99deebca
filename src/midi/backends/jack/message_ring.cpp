#include "midi/backends/jack/message_ring.h"

#include <algorithm>

namespace tracksmith::midi::jack {
namespace {

constexpr std::size_t kSizeBytes = sizeof(MessageRing::Head::size);
constexpr std::size_t kHeadBytes = kSizeBytes + sizeof(MessageRing::Head::time);

} // namespace

MessageRing::MessageRing(std::size_t capacity) : bytes_(capacity) {}

bool MessageRing::Put(std::span<const std::uint8_t> message, std::uint64_t time) noexcept {
    const std::uint64_t position = written_.load(std::memory_order_relaxed);
    const std::uint64_t used = position - read_.load(std::memory_order_acquire);
    if (kHeadBytes + message.size() > bytes_.size() - used) {
        return false;
    }
    const auto size = static_cast<std::uint32_t>(message.size());
    CopyIn(position, &size, sizeof size);
    CopyIn(position + kSizeBytes, &time, sizeof time);
    CopyIn(position + kHeadBytes, message.data(), message.size());
    written_.store(position + kHeadBytes + message.size(), std::memory_order_release);
    return true;
}

bool MessageRing::Peek(Head& head) const noexcept {
    const std::uint64_t position = read_.load(std::memory_order_relaxed);
    if (position == written_.load(std::memory_order_acquire)) {
        return false;
    }
    CopyOut(position, &head.size, sizeof head.size);
    CopyOut(position + kSizeBytes, &head.time, sizeof head.time);
    return true;
}

void MessageRing::Take(std::uint8_t* target) noexcept {
    const std::uint64_t position = read_.load(std::memory_order_relaxed);
    std::uint32_t size = 0;
    CopyOut(position, &size, sizeof size);
    CopyOut(position + kHeadBytes, target, size);
    read_.store(position + kHeadBytes + size, std::memory_order_release);
}

void MessageRing::DropUntil(std::uint64_t position) noexcept {
    if (read_.load(std::memory_order_relaxed) < position) {
        read_.store(position, std::memory_order_release);
    }
}

bool MessageRing::Empty() const noexcept {
    return read_.load(std::memory_order_acquire) == Written();
}

void MessageRing::CopyIn(std::uint64_t position, const void* source, std::size_t size) noexcept {
    const auto start = static_cast<std::size_t>(position & (bytes_.size() - 1));
    const std::size_t first = std::min(size, bytes_.size() - start);
    const auto* const from = static_cast<const std::uint8_t*>(source);
    std::copy_n(from, first, bytes_.data() + start);
    std::copy_n(from + first, size - first, bytes_.data());
}

void MessageRing::CopyOut(std::uint64_t position, void* target, std::size_t size) const noexcept {
    const auto start = static_cast<std::size_t>(position & (bytes_.size() - 1));
    const std::size_t first = std::min(size, bytes_.size() - start);
    auto* const to = static_cast<std::uint8_t*>(target);
    std::copy_n(bytes_.data() + start, first, to);
    std::copy_n(bytes_.data(), size - first, to + first);
}

} // namespace tracksmith::midi::jack
