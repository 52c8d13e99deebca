#pragma once

#include <cstdint>
#include <memory>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

#include "midi/backends/jack/connected_port.h"
#include "midi/backends/jack/message_ring.h"
#include "midi/port_backend.h"

namespace tracksmith::midi::jack {

/// An input port of ours, connected to one port that gives messages. They are handed to the
/// receiver on a thread of the connection, with the time at which they arrived at the server.
class MidiIn final : public InputConnection, private CycleHandler {
public:
    /// Connects to the port with that full name; null with the reason in `result` otherwise.
    static std::unique_ptr<MidiIn> Open(const std::string& peer, MessageReceiver receiver,
                                        ResultCode& result);
    ~MidiIn() override;

private:
    explicit MidiIn(MessageReceiver receiver);
    void Process(jack_client_t* client, void* buffer, jack_nframes_t frames) noexcept override;
    void Deliver(const std::stop_token& stop);

    MessageReceiver receiver_;
    // A receiver that falls behind by more than the ring holds loses the newest messages, since
    // the server's thread cannot wait for it.
    MessageRing ring_;
    std::counting_semaphore<> arrived_{0};
    std::uint64_t lastTimeMs_ = 0;
    ConnectedPort port_;
    std::jthread delivery_;
};

} // namespace tracksmith::midi::jack
