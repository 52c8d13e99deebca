#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi::alsa {

/// Joins a system-exclusive message that comes in packets (F0 without a closing F7, then packets
/// that begin with F7; Standard MIDI Files 1.0), because the sequencer's encoder takes a leading F7
/// for the end of a message.
class PacketJoiner {
public:
    /// Takes what is to be sent and gives what can be sent now: the message itself, the joined one,
    /// or nothing while packets are missing. `ready` is valid until the next call. A packet that
    /// continues nothing and does not begin with a status byte of its own cannot be sent:
    /// kNotSupported; one that makes the message longer than 1 MiB: kNoMemory.
    ResultCode Join(std::span<const std::uint8_t> message, std::span<const std::uint8_t>& ready);

private:
    ResultCode Continue(std::span<const std::uint8_t> data, std::span<const std::uint8_t>& ready);

    std::vector<std::uint8_t> joined_;
    bool open_ = false;
};

} // namespace tracksmith::midi::alsa
