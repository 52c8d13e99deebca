#pragma once

#include <cstdint>
#include <vector>

#include "song/song.h"

namespace tracksmith::song {

/// A note of a track.
struct TrackNote {
    static constexpr std::uint32_t kNone = 0xFFFF'FFFF;

    ConstEventLink on;
    /// Null where the note never ends.
    ConstEventLink off;
    /// Index of the first note of its channel and pitch that begins at a later tick.
    std::uint32_t following = kNone;
    /// Index of the next note of its channel and pitch in the chain.
    std::uint32_t next = kNone;
    /// Index of the note of its channel and pitch that was open when it began, the youngest.
    std::uint32_t inside = kNone;
    /// It was still open when `following` began.
    bool overlaps = false;
};

/// The notes of one track and the note-offs that end none.
struct TrackNotes {
    /// In the order of their note-ons.
    std::vector<TrackNote> notes;
    std::vector<ConstEventLink> strays;
};

/// Collects the notes of a track. They must be paired. Removed events (length 0) count as absent.
/// Linear. Throws std::bad_alloc.
TrackNotes NotesOfTrack(const Track& track);

} // namespace tracksmith::song
