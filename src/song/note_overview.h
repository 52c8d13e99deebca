#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "song/song.h"

namespace tracksmith::song {

/// How many notes start where, for painting: one row per channel, one column per measure (or per
/// several measures in a very long song).
struct NoteOverview {
    static constexpr std::size_t kMostColumns = 4096;

    /// Measures in the song, at least 1.
    std::int64_t measures = 1;
    /// Measures in one column.
    std::int64_t measuresPerColumn = 1;
    /// Note-ons per channel (0-15) and column.
    std::array<std::vector<std::uint32_t>, 16> notes;
    /// Note-ons per channel in the whole song.
    std::array<std::uint64_t, 16> total{};
    /// Start of each column in ticks, and the song's end behind them.
    std::vector<std::int32_t> columnTick;

    std::size_t Columns() const { return notes[0].size(); }
};

/// Counts the notes of all tracks that are not ignored. The song must have a time map. Linear in
/// the number of events.
NoteOverview MakeNoteOverview(const Song& song);

} // namespace tracksmith::song
