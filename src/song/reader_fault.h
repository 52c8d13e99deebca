#pragma once

#include <cstdint>
#include <string>

#include "base/text.h"

namespace tracksmith::song {

/// What can be wrong with the bytes of a Standard MIDI File.
enum class FaultKind : std::uint8_t {
    Header1,
    Header2,
    NoTracks,
    TrackHeader,
    InvalidOffset,
    NoRunningStatus,
    RunningStatusTooHigh,
    CommandF1ToF6,
    CommandFE,
    EndOfTrackLength,
    DataTooLarge,
    StatusTooLow,
    OutOfMemory
};

/// The pass over the file in which a fault is met. A fault that the measuring pass meets anywhere
/// in the file is told before any fault that only the building pass can see.
enum class ReaderPass : std::uint8_t { Measure, Build };

/// A fault in a file, thrown by the event walker and its sinks; never leaves the reader.
struct ReaderFault {
    FaultKind kind{};
    /// Offset in bytes from the start of the file.
    std::uint64_t position = 0;
    /// Song position in ticks.
    std::uint64_t tick = 0;
    /// The data byte, status or track index that the message names.
    std::uint32_t value = 0;
};

/// The message for a fault, composed of its pieces.
std::string FaultText(const ReaderFault& fault, ReaderPass pass, Language language);

} // namespace tracksmith::song
