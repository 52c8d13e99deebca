#pragma once

#include <cstdint>

#include "editing/music_state.h"
#include "editing/note_scan.h"
#include "editing/range_edits.h"
#include "editing/seam_notes.h"

namespace tracksmith::editing {

/// Inserts what is carried to the seam itself before the events `places` of the tracks, at `tick`.
/// Throws std::bad_alloc.
void InsertAtSeam(song::Song& song, const CutPlaces& places, std::int32_t tick,
                  const CarriedState& carried);

/// Inserts what is carried behind the seam at `tick`, behind all that stands there. Throws
/// std::bad_alloc.
void InsertBehindSeam(song::Song& song, const CutPlaces& places, std::int32_t tick,
                      const CarriedState& carried);

/// Moves the event and all behind it by `ticks`.
void MoveEvents(song::EventLink event, std::int32_t ticks);

/// Removes the note-offs at the tick of `event` that end the notes there, from `event` on.
void RemoveEndings(song::Song& song, song::Track& track, song::EventLink event,
                   const NotesAtTick& notes);

/// Both, one behind the other. Throws std::bad_alloc.
CarriedState Joined(CarriedState first, const CarriedState& second);

/// Brings length and notes in order after an edit. Throws std::bad_alloc.
SeamReport FinishSeams(song::Song& song, SeamNotes& notes, CarriedState carried);

} // namespace tracksmith::editing
