#include "editing/seam_notes.h"

#include <algorithm>
#include <cstddef>

#include "song/event_chain.h"
#include "song/note_overlaps.h"
#include "song/note_pairing.h"

namespace tracksmith::editing {
namespace {

using song::EventLink;

bool SamePitch(EventLink a, EventLink b) {
    return a->status == b->status && a->data1 == b->data1;
}

} // namespace

void InsertBefore(song::Track& track, EventLink place, EventLink event) {
    song::InsertAfter(track, place->prev, event);
}

void SeamNotes::Close(song::Track& track, EventLink place, std::int32_t tick,
                      std::span<const EventLink> open) {
    // Where the note-offs of the older notes go: before all that stands at tick - 1.
    EventLink olderPlace = place;
    while (olderPlace->prev != track.first && olderPlace->prev->tick >= tick - 1) {
        olderPlace = olderPlace->prev;
    }
    for (const bool older : {true, false}) {
        for (std::size_t i = 0; i < open.size(); ++i) {
            const bool another = i + 1 < open.size() && SamePitch(open[i], open[i + 1]);
            const std::int32_t offTick = std::max(open[i]->tick, tick - (another ? 2 : 1));
            if (older == (offTick < tick - 1)) {
                InsertBefore(track, older ? olderPlace : place,
                             NewNote(*open[i], song::kNoteOff, offTick));
                ++closed_;
            }
        }
    }
}

std::vector<EventLink> SeamNotes::BeginAgain(std::span<const EventLink> open, std::int32_t tick) {
    std::vector<EventLink> begun;
    begun.reserve(open.size());
    for (const EventLink note : open) {
        begun.push_back(NewNote(*note, song::kNoteOn, tick));
    }
    return begun;
}

EventLink SeamNotes::NewNote(const song::MidiEvent& note, std::uint8_t command, std::int32_t tick) {
    const auto status = static_cast<std::uint8_t>(command | note.Channel());
    const EventLink event = song::NewShortEvent(song_.pool, tick, status, note.data1, note.data2);
    event->origData1 = note.origData1;
    event->origData2 = note.origData2;
    events_.push_back(event.Unit());
    return event;
}

void SeamNotes::RemoveOverlaps() {
    song::SetNoteOnOffPointers(song_);
    if (events_.empty()) {
        return;
    }
    std::ranges::sort(events_);
    const auto made = [this](song::ConstEventLink event) {
        return std::ranges::binary_search(events_, event.Unit());
    };
    song::RemoveNoteOverlaps(song_, [&](const song::NoteOverlap& overlap) {
        return made(overlap.off) || made(overlap.off->noteOnLink);
    });
}

} // namespace tracksmith::editing
