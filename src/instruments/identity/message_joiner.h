#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "instruments/identity/identity_messages.h"

namespace tracksmith::instruments {

/// Joins the system-exclusive messages that an input delivers in parts. Real-time bytes (F8 to FF)
/// may stand anywhere, any other status byte ends what has begun: what is cut off or too long to be
/// an answer is dropped. One thread.
class MessageJoiner {
public:
    /// Bytes that an answer has at most.
    static constexpr std::size_t kMost = 256;

    /// Takes bytes in the order in which they came; returns the messages that they complete, each
    /// from F0 to F7.
    std::vector<std::vector<std::uint8_t>> Take(MessageBytes bytes);

private:
    bool TakeByte(std::uint8_t byte);

    std::vector<std::uint8_t> message_;
};

} // namespace tracksmith::instruments
