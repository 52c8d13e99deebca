#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "midi/backends/jack/connected_port.h"
#include "midi/backends/jack/message_ring.h"
#include "midi/port_backend.h"

namespace tracksmith::midi::jack {

/// Where a message belongs in a period: `stamp` is the server's frame time at which it was sent,
/// `start` the frame time of the period that is now sent (one period ago, so that distances between
/// messages are kept), `frames` its length. `frames` or more means a later period; a message that
/// is late or, after a jump of the clock, more than `mostAhead` frames early goes to 0.
jack_nframes_t FrameOffset(jack_nframes_t stamp, jack_nframes_t start, jack_nframes_t frames,
                           jack_nframes_t mostAhead);

/// An output port of ours, connected to one port that takes messages. Messages leave one period
/// after Send, in order, at the distances at which they were sent.
class MidiOut final : public OutputConnection, private CycleHandler {
public:
    /// Connects to the port with that full name; null with the reason in `result` otherwise.
    static std::unique_ptr<MidiOut> Open(const std::string& peer, ResultCode& result);
    /// What was accepted is still sent, for at most half a second.
    ~MidiOut() override;

    /// Never waits for the server: kNotReady when 256 KiB wait to be sent, or when the server has
    /// run no period for a second. A message must fit into
    /// one period's buffer (about 32,000 bytes), since JACK knows no partial messages; a longer one
    /// is kInvalidParameter. What does not fit beside others is sent in the next period. Any
    /// thread.
    ResultCode Send(std::span<const std::uint8_t> message) override;
    void Discard() override;

private:
    MidiOut();
    void Process(jack_client_t* client, void* buffer, jack_nframes_t frames) noexcept override;

    MessageRing ring_;
    std::atomic<std::uint64_t> discardUntil_{0};
    std::atomic<std::size_t> mostBytes_{0};
    ConnectedPort port_;
};

} // namespace tracksmith::midi::jack
