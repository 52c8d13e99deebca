#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

#include "base/system/message_poster.h"

#include "midi/my_midi_hdr.h"

namespace tracksmith::midi {

/// Where driver callbacks leave what the port's own thread shall do. The handler runs on the thread
/// that created the window; at most one message of a number waits at a time, so the headers that
/// came back wait in a list beside it.
class PortWindow {
public:
    explicit PortWindow(system::MessagePoster::Handler handler);

    /// Asks for a call of the handler. From any thread; never blocks for long.
    void Post(std::uint32_t message) noexcept;
    /// Lists a header that came back from the driver and posts kOutputDone. From any thread.
    void Complete(MidiHeader& header) noexcept;
    /// Takes one header that came back, the oldest first; null when there is none.
    TMyMidiHdr* TakeCompleted();
    /// Waits until a header has come back. False when none had until `deadline`.
    bool WaitForCompleted(std::chrono::steady_clock::time_point deadline);
    /// From now on the handler is not called; headers that come back are still listed. On the
    /// creating thread; afterwards the window may be used and destroyed on any.
    void StopPosting();
    /// From now on what callbacks leave here is ignored. On the creating thread, or any after
    /// StopPosting.
    void Detach();

private:
    std::mutex mutex_;
    std::condition_variable completion_;
    std::unique_ptr<system::MessagePoster> poster_;
    bool detached_ = false;
    TMyMidiHdr* firstCompleted_ = nullptr;
    TMyMidiHdr* lastCompleted_ = nullptr;
};

} // namespace tracksmith::midi
