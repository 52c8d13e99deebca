#include "song/note_overlaps.h"

#include <cstddef>

#include "song/event_chain.h"
#include "song/note_pairing.h"

namespace tracksmith::song {
namespace {

/// Follows the notes of one track by channel and pitch. Paired notes of a pitch end in the order in
/// which they begin.
class OverlapFinder {
public:
    OverlapFinder() : lines_(NotePairing::kKeys) {}

    void Meet(ConstEventLink event) {
        Line& line = lines_[NotePairing::KeyOf(event->status, event->data1)];
        if (event->IsNoteOn()) {
            Begin(line, event);
        } else if (event->noteOnLink) {
            End(line, event);
        }
    }

    /// Those before notes that end.
    std::vector<NoteOverlap> Overlaps() const {
        std::vector<NoteOverlap> overlaps;
        for (const auto& [off, next] : found_) {
            if (notes_[next].ended) {
                overlaps.push_back({off, notes_[next].on});
            }
        }
        return overlaps;
    }

private:
    static constexpr std::uint32_t kNone = 0xFFFF'FFFF;

    struct Note {
        ConstEventLink on;
        std::uint32_t next = kNone; // the first that begins later
        std::uint32_t younger = kNone;
        bool ended = false;
    };
    struct Line {
        std::uint32_t oldest = kNone; // of the open ones
        std::uint32_t last = kNone;
        std::uint32_t lastBegun = kNone; // the first of those that began last, together
    };

    void Begin(Line& line, ConstEventLink on) {
        const auto index = static_cast<std::uint32_t>(notes_.size());
        if (line.oldest == kNone) {
            line = {index, index, index};
        } else {
            notes_[line.last].younger = index;
            line.last = index;
            if (notes_[line.lastBegun].on->tick < on->tick) {
                for (std::uint32_t i = line.lastBegun; i != index; i = notes_[i].younger) {
                    notes_[i].next = index;
                }
                line.lastBegun = index;
            }
        }
        notes_.push_back({on});
    }

    void End(Line& line, ConstEventLink off) {
        if (line.oldest == kNone || notes_[line.oldest].on != off->noteOnLink) {
            return; // cannot be with paired notes
        }
        const std::uint32_t index = line.oldest;
        Note& note = notes_[index];
        note.ended = true;
        if (note.next != kNone) {
            found_.push_back({off, note.next});
        }
        line.oldest = note.younger;
        line.lastBegun = line.lastBegun == index ? note.younger : line.lastBegun;
    }

    struct Found {
        ConstEventLink off;
        std::uint32_t next;
    };

    std::vector<Line> lines_;
    std::vector<Note> notes_;
    std::vector<Found> found_;
};

} // namespace

std::vector<NoteOverlap> FindNoteOverlaps(const Track& track) {
    OverlapFinder finder;
    for (ConstEventLink event = track.first; event; event = event->next) {
        if ((event->Command() == kNoteOff || event->IsNoteOn()) && event->length > 0) {
            finder.Meet(event);
        }
    }
    return finder.Overlaps();
}

std::int64_t RemoveNoteOverlaps(Song& song, const OverlapChoice& choose) {
    std::int64_t cut = 0;
    for (Track& track : song.tracks) {
        if (track.ignored != 0 || track.eventCount <= 2) {
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
