#include "instruments/identity/message_joiner.h"

#include <utility>

namespace tracksmith::instruments {
namespace {

constexpr std::uint8_t kBegins = 0xF0;
constexpr std::uint8_t kEnds = 0xF7;
constexpr std::uint8_t kFirstRealTime = 0xF8;
constexpr std::uint8_t kFirstStatus = 0x80;

} // namespace

std::vector<std::vector<std::uint8_t>> MessageJoiner::Take(MessageBytes bytes) {
    std::vector<std::vector<std::uint8_t>> messages;
    for (const std::uint8_t byte : bytes) {
        if (byte < kFirstRealTime && TakeByte(byte)) {
            messages.push_back(std::exchange(message_, {}));
        }
    }
    return messages;
}

// True when the byte completes a message.
bool MessageJoiner::TakeByte(std::uint8_t byte) {
    if (byte == kBegins) {
        message_.assign(1, byte);
        return false;
    }
    if (message_.empty()) {
        return false;
    }
    if ((byte >= kFirstStatus && byte != kEnds) || message_.size() == kMost) {
        message_.clear();
        return false;
    }
    message_.push_back(byte);
    return byte == kEnds;
}

} // namespace tracksmith::instruments
