#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <jack/jack.h>
#include <string>
#include <vector>

namespace tracksmith::test {

using Bytes = std::vector<std::uint8_t>;

/// Longest time that a back end waits for a server which answers, on a loaded machine.
inline constexpr std::chrono::milliseconds kPatient{10'000};

/// Calls `done` until it is true; false when it is not within ten seconds.
bool Eventually(const std::function<bool()>& done);

/// A system-exclusive message of `size` bytes (at least 2) that differs with its size.
Bytes Exclusive(std::size_t size);

/// A JACK client made with nothing of the product, with one MIDI port.
class TestClient {
public:
    struct Received {
        Bytes bytes;
        /// Frame time at which the event was due.
        jack_nframes_t frame = 0;
    };

    /// A client `name` with the port `port`: JackPortIsInput keeps what comes in, JackPortIsOutput
    /// sends `toSend`.
    TestClient(const std::string& name, const std::string& port, JackPortFlags direction,
               std::vector<Bytes> toSend = {});
    TestClient(const TestClient&) = delete;
    TestClient& operator=(const TestClient&) = delete;
    ~TestClient();

    bool Works() const { return works_; }
    jack_client_t* Handle() const { return client_; }
    /// Number of messages that came in.
    std::size_t Count() const { return count_.load(std::memory_order_acquire); }
    /// The messages that have come in so far.
    std::vector<Received> Messages() const;
    /// Begins to send, one message in each period.
    void StartSending() { sending_.store(true, std::memory_order_release); }

private:
    struct Slot {
        std::size_t start = 0;
        std::size_t size = 0;
        jack_nframes_t frame = 0;
    };

    void Keep(void* buffer, jack_nframes_t frames);
    void SendNext(void* buffer);

    std::vector<Bytes> toSend_;
    std::size_t sent_ = 0;
    std::atomic<bool> sending_{false};
    Bytes store_;
    std::vector<Slot> slots_;
    std::atomic<std::size_t> count_{0};
    jack_client_t* client_ = nullptr;
    jack_port_t* port_ = nullptr;
    bool works_ = false;
};

} // namespace tracksmith::test
