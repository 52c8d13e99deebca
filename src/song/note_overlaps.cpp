#include "song/note_overlaps.h"

#include "song/event_chain.h"
#include "song/track_notes.h"

namespace tracksmith::song {

std::vector<NoteOverlap> FindNoteOverlaps(const Track& track) {
    const std::vector<TrackNote> notes = NotesOfTrack(track).notes;
    std::vector<NoteOverlap> overlaps;
    for (const TrackNote& note : notes) {
        if (note.overlaps && notes[note.following].off) {
            overlaps.push_back({note.off, notes[note.following].on});
        }
    }
    return overlaps;
}

std::int64_t RemoveNoteOverlaps(Song& song, const OverlapChoice& choose) {
    std::int64_t cut = 0;
    for (Track& track : song.tracks) {
        if (track.ignored != 0) {
            continue;
        }
        for (const NoteOverlap& overlap : FindNoteOverlaps(track)) {
            if (choose && !choose(overlap)) {
                continue;
            }
            const EventLink off(overlap.off.Unit());
            const EventLink next(overlap.next.Unit());
            UnlinkEvent(track, off);
            off->tick = next->tick;
            off->timeMs = next->timeMs;
            InsertAfter(track, next->prev, off);
            ++cut;
        }
    }
    return cut;
}

} // namespace tracksmith::song
