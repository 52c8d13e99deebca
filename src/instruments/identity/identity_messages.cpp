#include "instruments/identity/identity_messages.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>

namespace tracksmith::instruments {
namespace {

constexpr std::uint8_t kSysex = 0xF0;
constexpr std::uint8_t kEnd = 0xF7;
constexpr std::uint8_t kYamaha = 0x43;
constexpr std::uint8_t kXg = 0x4C;

// Two bytes of family, two of member, up to four of version.
constexpr std::size_t kCodes = 4;
constexpr std::size_t kMostVersion = 4;

// "F0 43 0n 4C", byte count (2), address (3); behind the data a checksum and F7.
constexpr std::size_t kDumpHead = 9;
constexpr std::size_t kDumpTail = 2;
constexpr std::size_t kModelName = 14;

bool IsWhole(MessageBytes message) {
    return message.size() > 2 && message.front() == kSysex && message.back() == kEnd &&
           std::ranges::all_of(message.subspan(1, message.size() - 2),
                               [](std::uint8_t byte) { return byte < 0x80; });
}

bool IsXgModelDump(MessageBytes message) {
    return IsWhole(message) && message.size() >= kDumpHead + kModelName + kDumpTail &&
           message[1] == kYamaha && message[2] < 0x10 && message[3] == kXg && message[6] == 1 &&
           message[7] == 0 && message[8] == 0;
}

// The lower seven bits of the sum of count, address, data and checksum are 0.
bool IsSumRight(MessageBytes dump) {
    const MessageBytes summed = dump.subspan(4, dump.size() - 5);
    return std::accumulate(summed.begin(), summed.end(), 0U) % 128 == 0;
}

} // namespace

std::string HexText(MessageBytes bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text.append(text.empty() ? "" : " ");
        text.push_back(kDigits[byte / 16U]);
        text.push_back(kDigits[byte % 16U]);
    }
    return text;
}

std::optional<IdentityReply> ReadIdentityReply(MessageBytes message) {
    if (!IsWhole(message) || message.size() < 7 || message[1] != 0x7E || message[3] != 0x06 ||
        message[4] != 0x02) {
        return std::nullopt;
    }
    MessageBytes rest = message.subspan(5, message.size() - 6);
    const std::size_t maker = rest.front() == 0 ? 3 : 1;
    if (rest.size() < maker + kCodes) {
        return std::nullopt;
    }
    IdentityReply reply;
    reply.maker = HexText(rest.first(maker));
    rest = rest.subspan(maker);
    reply.family = HexText(rest.first(2));
    reply.member = HexText(rest.subspan(2, 2));
    rest = rest.subspan(kCodes);
    reply.version = HexText(rest.first(std::min(rest.size(), kMostVersion)));
    return reply;
}

std::optional<std::string> ReadXgModelName(MessageBytes message) {
    if (!IsXgModelDump(message)) {
        return std::nullopt;
    }
    const std::size_t count = message[4] * std::size_t{128} + message[5];
    if (count < kModelName || message.size() != kDumpHead + count + kDumpTail ||
        !IsSumRight(message)) {
        return std::nullopt;
    }
    const MessageBytes bytes = message.subspan(kDumpHead, kModelName);
    std::string name(bytes.begin(), bytes.end());
    std::ranges::replace(name, '\0', ' ');
    const bool isText = std::ranges::all_of(name, [](char c) { return c >= ' ' && c <= '~'; });
    const std::size_t first = name.find_first_not_of(' ');
    if (!isText || first == std::string::npos) {
        return std::nullopt;
    }
    return name.substr(first, name.find_last_not_of(' ') + 1 - first);
}

} // namespace tracksmith::instruments
