#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "midi/my_midi_hdr.h"

namespace tracksmith::midi {

/// Owns the headers that a driver has and will give back. Thread safe.
class HeadersInFlight {
public:
    void Add(std::unique_ptr<TMyMidiHdr> header);
    /// Takes a header out; null when it is not listed.
    std::unique_ptr<TMyMidiHdr> Take(const TMyMidiHdr* header);
    std::vector<std::unique_ptr<TMyMidiHdr>> TakeAll();
    bool Empty() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<TMyMidiHdr>> headers_;
};

} // namespace tracksmith::midi
