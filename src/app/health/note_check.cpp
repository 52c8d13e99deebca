#include "app/health/note_check.h"

#include "song/track_notes.h"

namespace tracksmith::health {
namespace {

using song::TrackNote;
using song::TrackNotes;

// Whether loading with the minimum length would make the note longer.
bool CanBeLengthened(const song::Song& song, const TrackNotes& track, const TrackNote& note,
                     std::int32_t minimum) {
    if (note.off->tick - note.on->tick >= minimum || note.overlaps) {
        return false;
    }
    return note.following == TrackNote::kNone
               ? note.off->tick < song.songLength
               : track.notes[note.following].on->tick > note.off->tick;
}

void CheckNote(const song::Song& song, const TrackNotes& track, const TrackNote& note,
               std::int32_t shortNote, FindingList& found) {
    const std::uint8_t channel = note.on->Channel();
    if (!note.off) {
        found.AddAt(Rule::NoteWithoutEnd, Severity::Error, channel, note.on->tick, true);
        return;
    }
    if (note.overlaps && track.notes[note.following].off) {
        found.AddAt(Rule::Overlaps, Severity::Warning, channel,
                    track.notes[note.following].on->tick, true);
    }
    if (CanBeLengthened(song, track, note, shortNote)) {
        found.AddAt(Rule::ShortNotes, Severity::Hint, channel, note.on->tick, true);
    }
}

} // namespace

void CheckNotes(const song::Song& song, const song::Track& track, std::int32_t shortNote,
                FindingList& found) {
    if (track.ignored != 0) {
        return;
    }
    const TrackNotes notes = song::NotesOfTrack(track);
    for (const TrackNote& note : notes.notes) {
        CheckNote(song, notes, note, shortNote, found);
    }
    for (const song::ConstEventLink off : notes.strays) {
        found.AddAt(Rule::NoteWithoutBeginning, Severity::Hint, off->Channel(), off->tick, true);
    }
}

} // namespace tracksmith::health
