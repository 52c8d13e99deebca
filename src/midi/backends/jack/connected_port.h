#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "midi/backends/jack/client.h"
#include "midi/backends/jack/port_directory.h"
#include "midi/midi_driver.h"

namespace tracksmith::midi::jack {

/// What a port does in each period of the server.
class CycleHandler {
public:
    virtual ~CycleHandler() = default;
    /// Runs on the server's realtime thread: must not allocate, lock or wait. `buffer` is the
    /// port's MIDI buffer, `frames` the length of the period in frames.
    virtual void Process(jack_client_t* client, void* buffer, jack_nframes_t frames) noexcept = 0;
};

/// A client with one MIDI port, connected to one port of another client.
class ConnectedPort {
public:
    explicit ConnectedPort(CycleHandler& handler) : handler_(handler) {}
    ConnectedPort(const ConnectedPort&) = delete;
    ConnectedPort& operator=(const ConnectedPort&) = delete;
    ~ConnectedPort() = default;

    /// Joins the server, connects to the port with the full name `peer` and returns when the first
    /// period has been handled (at most a second): kNoDriver without a server, kBadDeviceId when
    /// the port cannot be connected, kNotReady when the server does not run. Called once.
    ResultCode Connect(Direction direction, const std::string& peer);

    /// True once the server or the other port is gone. Any thread.
    bool Gone() const;
    /// True when the server has run no period for more than a second: it is stopped or busy. Any
    /// thread.
    bool Stalled() const;
    /// Makes Gone true. Any thread, never waits.
    void MarkGone() { peerGone_.store(true, std::memory_order_release); }
    /// Waits until `count` more periods have been handled; false after `timeoutMs` or when gone.
    bool WaitForCycles(std::uint64_t count, int timeoutMs) const;
    /// Ends the calls of the handler. To be called before what the handler needs is destroyed.
    void Close() { client_.reset(); }
    /// Calls `use` with the library's client; false when the port is gone. Any thread, one at a
    /// time.
    template <typename Use>
    bool WithClient(Use use) {
        return !Gone() && client_->With(use);
    }

private:
    jack_client_t* Handle() const { return client_->Handle(); }
    bool Register(Direction direction, const std::string& peer);
    void SetCallbacks();
    static int OnProcess(jack_nframes_t frames, void* self) noexcept;
    static void OnRegistration(jack_port_id_t id, int registered, void* self);

    CycleHandler& handler_;
    // For the callbacks, while the client is being closed too.
    jack_client_t* handle_ = nullptr;
    jack_port_t* port_ = nullptr;
    jack_port_t* peer_ = nullptr;
    std::atomic<bool> peerGone_{false};
    std::atomic<std::uint64_t> cycles_{0};
    std::atomic<std::chrono::steady_clock::rep> lastCycle_{0};
    // Last, so that the callbacks have ended before anything that they use.
    std::unique_ptr<Client> client_;
};

} // namespace tracksmith::midi::jack
