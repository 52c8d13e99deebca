#include "player/send_queue.h"

#include <algorithm>
#include <array>
#include <bit>

namespace tracksmith::player {
namespace {

// Before each message stands its length.
using Length = std::uint32_t;
using LengthBytes = std::array<std::uint8_t, sizeof(Length)>;

} // namespace

void SendQueue::Reserve(std::size_t bytes) {
    ring_.resize(bytes);
    Clear();
}

bool SendQueue::Put(std::uint8_t status, std::span<const std::uint8_t> data) noexcept {
    const std::size_t size = data.size() + 1;
    if (sizeof(Length) + size > ring_.size() - used_) {
        return false;
    }
    Append(std::bit_cast<LengthBytes>(static_cast<Length>(size)));
    Append({&status, 1});
    Append(data);
    return true;
}

bool SendQueue::Take(std::vector<std::uint8_t>& message) noexcept {
    if (Empty()) {
        return false;
    }
    LengthBytes length{};
    Remove(length);
    message.resize(std::bit_cast<Length>(length));
    Remove(message);
    return true;
}

void SendQueue::Append(std::span<const std::uint8_t> bytes) noexcept {
    const std::size_t place = (first_ + used_) % ring_.size();
    const std::size_t fitting = std::min(bytes.size(), ring_.size() - place);
    std::copy_n(bytes.data(), fitting, ring_.data() + place);
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(fitting), bytes.end(), ring_.begin());
    used_ += bytes.size();
}

void SendQueue::Remove(std::span<std::uint8_t> bytes) noexcept {
    const std::size_t fitting = std::min(bytes.size(), ring_.size() - first_);
    std::copy_n(ring_.data() + first_, fitting, bytes.data());
    std::copy_n(ring_.data(), bytes.size() - fitting, bytes.data() + fitting);
    first_ = (first_ + bytes.size()) % ring_.size();
    used_ -= bytes.size();
}

} // namespace tracksmith::player
