#pragma once

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// Longest buffer that a header may have.
inline constexpr std::uint32_t kLongestBuffer = 65'535;

/// The rules of the system for headers, for drivers that keep them themselves. Callers hold the
/// lock of the port.

/// Marks a header as prepared; preparing twice is harmless.
inline ResultCode Prepare(MidiHeader& header) {
    if (header.data == nullptr || header.bufferLength > kLongestBuffer) {
        return kInvalidParameter;
    }
    header.flags |= MidiHeader::kPrepared;
    return kNoError;
}

/// Takes the mark away; refused while the driver has the header.
inline ResultCode Unprepare(MidiHeader& header) {
    if ((header.flags & MidiHeader::kInQueue) != 0) {
        return kStillPlaying;
    }
    header.flags &= ~MidiHeader::kPrepared;
    return kNoError;
}

/// The header goes to the driver.
inline ResultCode Lend(MidiHeader& header) {
    if ((header.flags & MidiHeader::kPrepared) == 0) {
        return kUnprepared;
    }
    if ((header.flags & MidiHeader::kInQueue) != 0) {
        return kStillPlaying;
    }
    header.flags = (header.flags | MidiHeader::kInQueue) & ~MidiHeader::kDone;
    return kNoError;
}

/// The header comes back unused.
inline void TakeBack(MidiHeader& header) {
    header.flags &= ~MidiHeader::kInQueue;
}

/// The header comes back done.
inline void GiveBack(MidiHeader& header) {
    header.flags = (header.flags | MidiHeader::kDone) & ~MidiHeader::kInQueue;
}

} // namespace tracksmith::midi
