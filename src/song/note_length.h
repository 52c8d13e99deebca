#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "song/song.h"

namespace tracksmith::song {

/// How short notes are made longer.
struct NoteLengthOptions {
    /// Fewest ticks that a note lasts; 0 leaves all notes as they are.
    std::int32_t minimum = 0;
    /// Drum parts are left alone.
    bool exceptDrums = false;
};

/// The minimum that users are given at first, in ticks, and the largest that they can choose.
inline constexpr std::int32_t kUsualNoteLength = 20;
inline constexpr std::int32_t kMostNoteLength = 9999;

/// A note-off, paired with its note-on, and its track.
struct NoteEnd {
    EventLink off;
    std::int32_t track = 0;
};

/// The ends of all notes shorter than `minimum` ticks, in track order and then chain order; ignored
/// tracks are left out. The notes must be paired. Throws std::bad_alloc.
std::vector<NoteEnd> FindShortNotes(Song& song, std::int32_t minimum);

/// Gives every note of the song the minimum length: moves its note-off, behind what stands at the
/// new tick; where no place is found directly before End of Track, at the song's length at most.
/// Ignored tracks stay as they are. Clock times are kept right where there is a time map. The notes
/// must be paired; they stay so but for those that come to lie behind a note-off without a note-on.
/// Linear. Returns how many were lengthened. Throws std::bad_alloc
/// before anything is changed.
std::int64_t CheckForZeroLength(Song& song, const NoteLengthOptions& options);

/// The same for the short notes of a song that has just been loaded; `ends` are in chain order on
/// each track. A lengthened note does not run into the next one of its channel and pitch, but
/// ends where that begins; it never becomes shorter than it was.
std::int64_t LengthenLoadedNotes(Song& song, std::span<const NoteEnd> ends,
                                 const NoteLengthOptions& options);

} // namespace tracksmith::song
