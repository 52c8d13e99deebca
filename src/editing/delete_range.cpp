#include <algorithm>
#include <array>
#include <utility>

#include "editing/music_state.h"
#include "editing/range_edits.h"
#include "editing/seam_notes.h"
#include "editing/seam_state.h"
#include "song/event_chain.h"

namespace tracksmith::editing {
namespace {

using song::EventLink;

// What the song is set up with before its first note.
bool IsSetUp(const song::MidiEvent& event) {
    return event.length > 0 && (event.IsChannelMessage() ? event.status >= song::kControlChange
                                                         : event.status == song::kSystemExclusive);
}

/// One run of DeleteRange.
class RangeCutter {
public:
    RangeCutter(song::Song& song, const TickRange& range)
        : song_(song),
          range_(range),
          begin_(PlacesAt(song, range.start)),
          end_(PlacesAt(begin_, range.end)),
          seam_(song) {}

    SeamReport Run(const NoteFaultListener& listener) {
        const std::array<std::int32_t, 2> ticks{range_.start, range_.end};
        OpenNotes open;
        for (song::Track& track : song_.tracks) {
            notes_.push_back(ScanNotes(track, ticks, open, listener));
        }
        CarriedState carried = CarryOver();
        for (std::size_t index = 0; index < song_.tracks.size(); ++index) {
            CutTrack(index);
        }
        InsertAtSeam(song_, places_, range_.start, carried);
        for (std::size_t index = 0; index < song_.tracks.size(); ++index) {
            for (const EventLink note : again_[index]) {
                InsertBefore(song_.tracks[index], places_[index], note);
            }
            MoveEvents(places_[index], -range_.Length());
        }
        InsertBehindSeam(song_, places_, range_.start + 1, carried);
        return FinishSeams(song_, seam_, std::move(carried));
    }

private:
    CarriedState CarryOver() const {
        Seam seam;
        seam.from.Play(song_, {}, begin_);
        seam.to = seam.from;
        seam.to.Play(song_, begin_, end_);
        return Carry(std::move(seam), song_, end_, range_.end, true);
    }

    // Takes the range out of a track and ends the notes before it.
    void CutTrack(std::size_t index) {
        song::Track& track = song_.tracks[index];
        const EventLink before = begin_[index]->prev;
        const NotesAtTick& behind = notes_[index].back();
        again_.push_back(seam_.BeginAgain(behind.Across(), range_.start));
        EventLink event = begin_[index];
        while (event != end_[index]) {
            const EventLink next = event->next;
            song::RemoveEvent(song_, track, event);
            event = next;
        }
        // Note-offs at the range's end of notes that have gone.
        RemoveEndings(song_, track, event, behind);
        const EventLink place = before->next;
        places_.push_back(place);
        seam_.Close(track, place, range_.start, notes_[index].front().open);
    }

    song::Song& song_;
    TickRange range_;
    CutPlaces begin_;
    CutPlaces end_;
    CutPlaces places_;
    SeamNotes seam_;
    std::vector<std::vector<NotesAtTick>> notes_;
    std::vector<std::vector<EventLink>> again_;
};

} // namespace

std::optional<std::int32_t> FirstNoteTick(const song::Song& song) {
    std::optional<std::int32_t> first;
    for (const song::Track& track : song.tracks) {
        song::ConstEventLink event = track.first;
        while (event && !(event->IsNoteOn() && event->length > 0)) {
            event = event->next;
        }
        if (event) {
            first = std::min(first.value_or(event->tick), event->tick);
        }
    }
    return first;
}

bool MayDelete(const song::Song& song, const TickRange& range) {
    const std::optional<std::int32_t> firstNote = FirstNoteTick(song);
    if (!firstNote || range.start >= *firstNote) {
        return true;
    }
    if (range.end >= *firstNote) {
        return false;
    }
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && event->tick < range.end;
             event = event->next) {
            if (event->tick >= range.start && IsSetUp(*event)) {
                return false;
            }
        }
    }
    return true;
}

SeamReport DeleteRange(song::Song& song, const TickRange& range,
                       const NoteFaultListener& listener) {
    return RangeCutter(song, range).Run(listener);
}

} // namespace tracksmith::editing
