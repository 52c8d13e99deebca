#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/message_host.h"

#include "app/diff/difference.h"
#include "song/midi_file_reader.h"
#include "song/place_map.h"
#include "song/song.h"

namespace tracksmith::diff {

/// Two states of a song as the bytes of files.
struct FilePair {
    std::shared_ptr<const std::vector<std::uint8_t>> before;
    std::shared_ptr<const std::vector<std::uint8_t>> after;
    /// How the earlier one is read; the later one is as this program writes.
    song::DecodeOptions decodeOptions;
    bool runningStatusAcrossSysex = false;
    /// The practice tempo of the later one, in quarter notes per minute: where no tempo stands at
    /// its start, saving puts one there.
    std::int32_t tempoOffset = 0;
};

/// What was found between two files.
struct FileComparison {
    /// The earlier state, ready to be played.
    song::Song before;
    song::TimeMap beforeMap;
    song::TimeMap afterMap;
    Differences differences;
    /// From the earlier state (earlier) to the later one.
    song::PlaceMap places;
};

/// Decodes both files as they are, without clean-up or preparing, and compares them. Any thread.
/// A fault of one of them is shown through `host` and raised as EMidiError. Throws std::bad_alloc.
std::unique_ptr<FileComparison> CompareFiles(const FilePair& files, MessageHost& host);

} // namespace tracksmith::diff
