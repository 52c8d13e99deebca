#include "song/note_pairing.h"

#include "base/parallel.h"

#include "song/prefetch.h"

namespace tracksmith::song {

NotePairing::Ended NotePairing::Queue(std::size_t key, EventLink event, std::uint32_t tick) {
    lines_.resize(kKeys);
    if (waiting_.empty()) {
        waiting_.emplace_back();
    }
    std::uint32_t place = free_;
    if (place == 0) {
        place = static_cast<std::uint32_t>(waiting_.size());
        waiting_.emplace_back();
    } else {
        free_ = waiting_[place].next;
    }
    waiting_[place] = {event.Unit(), tick, 0};
    Line& line = lines_[key];
    (line.first == 0 ? line.first : waiting_[line.last].next) = place;
    line.last = place;
    slots_[key].tick |= kSeveral;
    ++open_;
    return {};
}

NotePairing::Ended NotePairing::EndOldest(std::size_t key) {
    Slot& slot = slots_[key];
    const Ended ended{EventLink(slot.unit), static_cast<std::int32_t>(slot.tick & ~kSeveral)};
    Line& line = lines_[key];
    const std::uint32_t place = line.first;
    Waiting& next = waiting_[place];
    line.first = next.next;
    slot = {next.unit, next.tick | (line.first != 0 ? kSeveral : 0)};
    next.next = free_;
    free_ = place;
    --open_;
    return ended;
}

void NotePairing::EndTrack() {
    if (open_ != 0) {
        slots_.fill({});
        lines_.clear();
        waiting_.clear();
        free_ = 0;
    }
    leftOpen_ += open_;
    open_ = 0;
}

namespace {

void PairTrack(Track& track) {
    constexpr std::int32_t kWithoutNotes = 2; // head and End of Track
    if (track.eventCount <= kWithoutNotes) {
        return;
    }
    NotePairing pairing;
    for (MidiEvent* event = track.first.Get(); event != nullptr; event = event->next.Get()) {
        PrefetchForWriting(event);
        if (event->kind == kShortMessage && event->length > 0) {
            event->noteOnLink = pairing
                                    .Meet(event->status, event->data1, LinkTo(*event),
                                          static_cast<std::uint32_t>(event->tick))
                                    .noteOn;
        } else {
            event->noteOnLink = EventLink();
        }
    }
}

} // namespace

void SetNoteOnOffPointers(Song& song) {
    ParallelFor(song.tracks.size(), ThreadsFor(song.pool.UsedBytes()),
                [&song](std::size_t track) { PairTrack(song.tracks[track]); });
}

} // namespace tracksmith::song
