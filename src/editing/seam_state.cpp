#include "editing/seam_state.h"

#include <utility>

#include "song/event_chain.h"
#include "song/song_length.h"

namespace tracksmith::editing {
namespace {

void Insert(song::Song& song, const CutPlaces& places, std::int32_t tick,
            const std::vector<CarriedMessage>& messages) {
    for (const CarriedMessage& message : messages) {
        InsertBefore(
            song.tracks[message.track], places[message.track],
            song::NewShortEvent(song.pool, tick, message.status, message.data1, message.data2));
    }
}

} // namespace

void InsertAtSeam(song::Song& song, const CutPlaces& places, std::int32_t tick,
                  const CarriedState& carried) {
    for (const CarriedMeta& meta : carried.metas) {
        InsertBefore(song.tracks[meta.track], places[meta.track],
                     song::NewMetaEvent(song.pool, tick, meta.type, meta.bytes));
    }
    Insert(song, places, tick, carried.messages);
}

void InsertBehindSeam(song::Song& song, const CutPlaces& places, std::int32_t tick,
                      const CarriedState& carried) {
    if (!carried.behind.empty()) {
        Insert(song, PlacesAt(places, tick + 1), tick, carried.behind);
    }
}

void MoveEvents(song::EventLink event, std::int32_t ticks) {
    for (; event; event = event->next) {
        event->tick += ticks;
    }
}

void RemoveEndings(song::Song& song, song::Track& track, song::EventLink event,
                   const NotesAtTick& notes) {
    if (notes.endingOffs.empty()) {
        return;
    }
    const std::int32_t tick = event->tick;
    while (event != track.last && event->tick == tick) {
        const song::EventLink next = event->next;
        if (notes.EndsHere(event)) {
            song::RemoveEvent(song, track, event);
        }
        event = next;
    }
}

CarriedState Joined(CarriedState first, const CarriedState& second) {
    first.metas.insert(first.metas.end(), second.metas.begin(), second.metas.end());
    first.messages.insert(first.messages.end(), second.messages.begin(), second.messages.end());
    first.behind.insert(first.behind.end(), second.behind.begin(), second.behind.end());
    return first;
}

SeamReport FinishSeams(song::Song& song, SeamNotes& notes, CarriedState carried) {
    song::RenewSongLength(song);
    const auto count = static_cast<std::int64_t>(carried.metas.size() + carried.messages.size() +
                                                 carried.behind.size());
    SeamReport report{notes.Closed(), notes.BegunAgain(), count, std::move(carried),
                      song::CheckForNoteOnsNoteOffs(song)};
    notes.RemoveOverlaps();
    return report;
}

} // namespace tracksmith::editing
