#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"

#include "editing/range_check.h"
#include "editing/range_edits.h"
#include "editing/range_figures.h"
#include "editing/range_position.h"
#include "song/song.h"

namespace tracksmith::editing {

/// What transposing does to the notes of one channel that begin in the range; pitches 0-127.
struct ChannelMove {
    std::int64_t notes = 0;
    std::int64_t moved = 0;
    /// Of those that moved, how many were folded back by octaves.
    std::int64_t folded = 0;
    std::uint8_t lowest = 127;
    std::uint8_t highest = 0;
    std::uint8_t lowestAfter = 127;
    std::uint8_t highestAfter = 0;
};

/// What a tool would do to a song, found on a copy of it. The song itself is only read.
struct Foresight {
    RangeReading reading;
    RangeFigures figures;
    SeamReport seams;
    std::array<ChannelMove, song::kMidiChannels> moves;
    /// The first chords of the range as they are and as transposing makes them.
    std::vector<std::string> chords;
    std::vector<std::string> chordsAfter;
    /// The changed copy, with times; null where the reading has a fault.
    std::unique_ptr<song::Song> after;
};

/// What cutting, copying and transposing would do; where a position is faulty, that only. The song
/// must have a time map. Linear. Throws std::bad_alloc.
Foresight ForeseeDelete(const song::Song& song, const RangeWish& wish, Language language);
Foresight ForeseeCopy(const song::Song& song, const RangeWish& wish, bool bringState,
                      Language language);
Foresight ForeseeTranspose(const song::Song& song, const RangeWish& wish,
                           const Transposing& transposing, Language language);

} // namespace tracksmith::editing
