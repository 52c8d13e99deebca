#pragma once

#include <cstdint>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// One buffer for a long message with the header that a driver needs. The header's `user` field
/// points back here, so that a header that comes back finds its object.
class TMyMidiHdr {
public:
    /// A buffer of `bufferSize` zero bytes. With 0 neither memory block exists and the header has
    /// no data. Raises std::bad_alloc.
    explicit TMyMidiHdr(std::uint32_t bufferSize);
    TMyMidiHdr(const TMyMidiHdr&) = delete;
    TMyMidiHdr& operator=(const TMyMidiHdr&) = delete;
    /// Frees both blocks; the driver must be done with them.
    ~TMyMidiHdr();

    /// The header to hand to a driver.
    MidiHeader& Header() { return hdrPointer != nullptr ? *hdrPointer : bare_; }
    /// The object that a header belongs to.
    static TMyMidiHdr* Of(const MidiHeader& header) {
        return static_cast<TMyMidiHdr*>(header.user);
    }

    /// Locked memory with the header, and locked memory with the bytes.
    void* hdrHandle = nullptr;
    MidiHeader* hdrPointer = nullptr;
    void* sysexHandle = nullptr;
    std::uint8_t* sysexPointer = nullptr;

private:
    friend class PortWindow;

    MidiHeader bare_;
    TMyMidiHdr* nextCompleted_ = nullptr;
};

} // namespace tracksmith::midi
