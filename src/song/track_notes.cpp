#include "song/track_notes.h"

#include "song/note_pairing.h"
#include "song/prefetch.h"

namespace tracksmith::song {
namespace {

constexpr std::uint32_t kNone = TrackNote::kNone;

// The notes of a channel and pitch. Paired notes end in the order in which they begin.
struct Line {
    std::uint32_t open = kNone; // the oldest
    std::uint32_t last = kNone;
    std::uint32_t lastBegun = kNone; // the first of those that began last, together
};

void Begin(std::vector<TrackNote>& notes, Line& line, ConstEventLink on) {
    const auto index = static_cast<std::uint32_t>(notes.size());
    TrackNote& note = notes.emplace_back();
    note.on = on;
    note.inside = line.open == kNone ? kNone : line.last;
    if (line.last != kNone) {
        notes[line.last].next = index;
    }
    line.last = index;
    line.open = line.open == kNone ? index : line.open;
    if (line.lastBegun == kNone) {
        line.lastBegun = index;
    } else if (notes[line.lastBegun].on->tick < on->tick) {
        for (std::uint32_t i = line.lastBegun; i != index; i = notes[i].next) {
            notes[i].following = index;
        }
        line.lastBegun = index;
    }
}

bool End(std::vector<TrackNote>& notes, Line& line, ConstEventLink off) {
    if (line.open == kNone || !off->noteOnLink) {
        return false;
    }
    TrackNote& note = notes[line.open];
    note.off = off;
    note.overlaps = note.following != kNone;
    line.open = note.next;
    return true;
}

} // namespace

TrackNotes NotesOfTrack(const Track& track) {
    TrackNotes found;
    if (track.eventCount <= 2) {
        return found; // head and End of Track
    }
    std::vector<Line> lines(NotePairing::kKeys);
    for (const MidiEvent* event = track.first.Get(); event != nullptr; event = event->next.Get()) {
        PrefetchForReading(event);
        const bool isOff = event->Command() == kNoteOff;
        if ((!isOff && !event->IsNoteOn()) || event->length == 0) {
            continue;
        }
        Line& line = lines[NotePairing::KeyOf(event->status, event->data1)];
        if (!isOff) {
            Begin(found.notes, line, LinkTo(*event));
        } else if (!End(found.notes, line, LinkTo(*event))) {
            found.strays.push_back(LinkTo(*event));
        }
    }
    return found;
}

} // namespace tracksmith::song
