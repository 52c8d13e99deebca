#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// Messages by which an instrument is asked who it is, and their answers. Any thread.
namespace tracksmith::instruments {

/// Bytes of a message, or a part of one.
using MessageBytes = std::span<const std::uint8_t>;

/// Asks every device on the cable for its identity; behind the status byte F0. Source: MIDI 1.0,
/// General Information, Identity Request.
inline constexpr std::array<std::uint8_t, 5> kIdentityRequest{0x7E, 0x7F, 0x06, 0x01, 0xF7};

/// Asks an XG instrument of device number 1 for a dump of its model name; behind the status byte
/// F0. Source: the XG format's dump request, address 01 00 00.
inline constexpr std::array<std::uint8_t, 7> kXgModelRequest{0x43, 0x20, 0x4C, 0x01,
                                                             0x00, 0x00, 0xF7};

/// What a device answers to kIdentityRequest: bytes as they are sent, in hexadecimal, separated by
/// blanks ("00 44").
struct IdentityReply {
    /// One byte, or three when the first is 00.
    std::string maker;
    /// Two bytes each.
    std::string family;
    std::string member;
    /// Up to four bytes.
    std::string version;

    bool operator==(const IdentityReply&) const = default;
};

/// The bytes in hexadecimal, separated by blanks.
std::string HexText(MessageBytes bytes);

/// Reads a whole message from F0 to F7; nothing when it is no answer to kIdentityRequest. Some
/// devices send fewer or more than four bytes of version, which is accepted.
std::optional<IdentityReply> ReadIdentityReply(MessageBytes message);

/// Reads a whole message from F0 to F7; nothing when it is no answer to kXgModelRequest, its
/// checksum is wrong or the name has characters that are not ASCII. Without blanks at its ends.
std::optional<std::string> ReadXgModelName(MessageBytes message);

} // namespace tracksmith::instruments
