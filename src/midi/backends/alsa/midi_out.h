#pragma once

#include <RtMidi.h>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>

#include "midi/backends/alsa/packet_joiner.h"
#include "midi/backends/alsa/port_names.h"
#include "midi/port_backend.h"

namespace tracksmith::midi::alsa {

/// An open output port.
class MidiOut final : public OutputConnection {
public:
    /// Opens the port of that full name; null with the reason in `result` otherwise. `present` is
    /// cleared by the owner when the port has vanished.
    static std::unique_ptr<MidiOut> Open(const std::string& fullName,
                                         std::shared_ptr<const std::atomic<bool>> present,
                                         ResultCode& result);

    /// Any thread.
    ResultCode Send(std::span<const std::uint8_t> message) override;

private:
    explicit MidiOut(std::shared_ptr<const std::atomic<bool>> present)
        : present_(std::move(present)) {}
    ResultCode OpenPort(const std::string& fullName);
    bool SendInPieces(std::span<const std::uint8_t> message);
    static void OnError(RtMidiError::Type type, const std::string& text, void* self);

    std::shared_ptr<const std::atomic<bool>> present_;
    std::mutex sending_;
    PacketJoiner joiner_;
    bool failed_ = false;
    std::unique_ptr<RtMidiOut> device_;
};

} // namespace tracksmith::midi::alsa
