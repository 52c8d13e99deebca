#include "midi/backends/alsa/packet_joiner.h"

namespace tracksmith::midi::alsa {
namespace {

constexpr std::uint8_t kExclusive = 0xF0;
constexpr std::uint8_t kExclusiveEnd = 0xF7;
constexpr std::uint8_t kFirstRealtime = 0xF8;
constexpr std::size_t kMostBytes = std::size_t{1024} * 1024;

} // namespace

ResultCode PacketJoiner::Join(std::span<const std::uint8_t> message,
                              std::span<const std::uint8_t>& ready) {
    ready = message;
    const std::uint8_t status = message.front();
    if (status == kExclusiveEnd) {
        return Continue(message.subspan(1), ready);
    }
    if (status >= kFirstRealtime) {
        return kNoError;
    }
    // Any other status byte ends an exclusive message that was left unfinished.
    open_ = status == kExclusive && message.back() != kExclusiveEnd;
    joined_.clear();
    if (open_) {
        joined_.assign(message.begin(), message.end());
        ready = {};
    }
    return kNoError;
}

ResultCode PacketJoiner::Continue(std::span<const std::uint8_t> data,
                                  std::span<const std::uint8_t>& ready) {
    ready = {};
    if (!open_) {
        const bool ownStatus = !data.empty() && (data.front() & 0x80) != 0;
        ready = ownStatus ? data : ready;
        return ownStatus ? kNoError : kNotSupported;
    }
    if (joined_.size() + data.size() > kMostBytes) {
        open_ = false;
        return kNoMemory;
    }
    joined_.insert(joined_.end(), data.begin(), data.end());
    if (data.empty()) {
        joined_.push_back(kExclusiveEnd);
    }
    if (joined_.back() == kExclusiveEnd) {
        open_ = false;
        ready = joined_;
    }
    return kNoError;
}

} // namespace tracksmith::midi::alsa
