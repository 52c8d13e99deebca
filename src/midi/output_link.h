#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "midi/ctl_info.h"
#include "midi/headers_in_flight.h"
#include "midi/midi_driver.h"
#include "midi/port_window.h"

namespace tracksmith::midi {

/// What a driver has of one output port: the handle, the record and the window that its callbacks
/// reach, and the headers that are under way. Made and destroyed on the thread of the port that it
/// belongs to; Submit may come from another thread while it is open.
class OutputLink {
public:
    /// `handler` is called on the creating thread with kOutputDone when headers have come back.
    OutputLink(MidiOutputDriver& driver, system::MessagePoster::Handler handler);
    OutputLink(const OutputLink&) = delete;
    OutputLink& operator=(const OutputLink&) = delete;
    /// What a driver that could not close may still call back is left to it.
    ~OutputLink();

    /// Opens a device. The link must be closed.
    ResultCode Open(std::uint32_t device);
    /// The driver's handle, 0 when closed.
    DeviceHandle Handle() const { return handle_; }

    /// Prepares a header for Submit.
    ResultCode Prepare(TMyMidiHdr& header);
    /// Hands a prepared header to the driver, which has it until it comes back.
    ResultCode Submit(std::unique_ptr<TMyMidiHdr> header);
    /// Frees the headers that came back; returns their number. `failure` takes the code of one that
    /// could not be freed.
    std::size_t ReleaseCompleted(ResultCode& failure);

    /// Gets back the headers that the driver has, waiting at most 500 ms, and closes the handle;
    /// what the driver keeps is left to it. `fullReset` silences the device first. Returns the
    /// first failure.
    ResultCode Close(bool fullReset);
    /// False when Close has failed, so that the driver may still call back: another link is needed.
    bool Reusable() const { return !stuck_; }
    /// From now on the handler is not called. Creating thread; afterwards the link may be closed
    /// and destroyed on any thread.
    void StopPosting() { window_->StopPosting(); }

private:
    ResultCode EndTransfers(bool fullReset);

    MidiOutputDriver& driver_;
    std::atomic<DeviceHandle> handle_ = 0;
    std::unique_ptr<PortWindow> window_;
    CtlInfoPointer ctlInfo_;
    HeadersInFlight inFlight_;
    bool stuck_ = false;
};

} // namespace tracksmith::midi
