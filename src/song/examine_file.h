#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "song/reader_fault.h"

namespace tracksmith::song {

/// What walking over a whole file found out about it.
struct FileFindings {
    /// The fault for which the decoder refuses the bytes; nothing when they are sound.
    std::optional<ReaderFault> fault;
    /// Index of the track that the fault lies in, from 0.
    std::uint32_t track = 0;
    /// Tracks that the header promises.
    std::uint32_t trackCount = 0;
    /// The fault is that the file ends before what was promised in it.
    bool endsTooEarly = false;
    /// Bytes that the song takes in memory; 0 with a fault.
    std::uint64_t memory = 0;
};

/// Finds the fault that DecodeMidiData refuses `file` for, without building anything. Raises
/// nothing, any thread.
FileFindings ExamineMidiData(std::span<const std::uint8_t> file, bool runningStatusAcrossSysex);

} // namespace tracksmith::song
