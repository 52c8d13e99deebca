#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "song/song.h"

namespace tracksmith::song {

/// A note that is still open when the next one of its channel and pitch begins.
struct NoteOverlap {
    /// Its note-off, which has its note-on.
    ConstEventLink off;
    /// The first note-on that begins later than it and meanwhile.
    ConstEventLink next;
};

/// The overlaps of one track that RemoveNoteOverlaps mends, in the order of the notes. The
/// notes must be paired. Linear. Throws std::bad_alloc.
std::vector<NoteOverlap> FindNoteOverlaps(const Track& track);

/// Chooses overlaps.
using OverlapChoice = std::function<bool(const NoteOverlap&)>;

/// Where a note is still open when the next one of its channel and pitch begins, its note-off moves
/// directly before that note-on, to its tick. Notes that begin together stay as they are, and so
/// does a note before one that never ends, which would sound on then. With `choose` only the
/// overlaps that it wants. Ignored tracks stay as they are. The notes must be paired, and stay so;
/// clock times are kept right where there is a time map. Linear. Returns how many notes were cut.
/// Throws std::bad_alloc before anything of the track is changed.
std::int64_t RemoveNoteOverlaps(Song& song, const OverlapChoice& choose = {});

} // namespace tracksmith::song
