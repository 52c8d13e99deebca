#pragma once

#include <cstddef>
#include <cstdint>

namespace tracksmith::midi {

/// Bytes of the message that begins with a status byte (0x80-0xFF, not 0xF0), the status included
/// (MIDI 1.0, table of status bytes).
constexpr std::size_t ShortMessageLength(std::uint8_t status) {
    if (status < 0xF0) {
        return status >= 0xC0 && status < 0xE0 ? 2 : 3;
    }
    if (status == 0xF2) {
        return 3;
    }
    return status == 0xF1 || status == 0xF3 ? 2 : 1;
}

} // namespace tracksmith::midi
