#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// An open output of a PortBackend. Send and Silence may come from the playback thread.
class OutputConnection {
public:
    virtual ~OutputConnection() = default;
    /// Sends one complete message: 1-3 bytes of a channel or system message, or a whole
    /// system-exclusive message with its F0 (or the continuation packet that begins with F7).
    /// Never blocks for longer than a write to a device takes; kNotReady when the way is full,
    /// kNoDriver when the device is gone.
    virtual ResultCode Send(std::span<const std::uint8_t> message) = 0;
    /// Drops what waits to be sent.
    virtual void Discard() {}
    /// Volume 0-0xFFFF where the device has one.
    virtual ResultCode SetVolume(std::uint32_t /*volume*/) { return kNotSupported; }
};

/// An open input of a PortBackend; receiving ends when it is destroyed.
class InputConnection {
public:
    virtual ~InputConnection() = default;
};

/// Takes one complete received message with its time in milliseconds of a steady clock; called on
/// the back end's thread.
using MessageReceiver =
    std::function<void(std::span<const std::uint8_t> message, std::uint64_t timeMs)>;

/// The little that a MIDI system other than that of Windows must offer. PortableOutputDriver and
/// PortableInputDriver turn it into a driver with handles, headers and codes. Listing and opening
/// come from the user-interface thread; nothing throws.
class PortBackend {
public:
    virtual ~PortBackend() = default;
    /// The ports that can be sent to, in a stable order. May be called twice a second.
    virtual std::vector<DeviceCapabilities> Outputs() = 0;
    /// The ports that can be received from.
    virtual std::vector<DeviceCapabilities> Inputs() = 0;
    /// Opens the output of that product name; on failure `result` says why and null is returned.
    virtual std::unique_ptr<OutputConnection> OpenOutput(const std::string& productName,
                                                         ResultCode& result) = 0;
    virtual std::unique_ptr<InputConnection> OpenInput(const std::string& productName,
                                                       MessageReceiver receiver,
                                                       ResultCode& result) = 0;
};

} // namespace tracksmith::midi
