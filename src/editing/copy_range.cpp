#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "editing/event_copy.h"
#include "editing/music_state.h"
#include "editing/range_edits.h"
#include "editing/seam_notes.h"
#include "editing/seam_state.h"
#include "song/event_chain.h"
#include "song/event_walker.h"

namespace tracksmith::editing {
namespace {

using song::EventLink;

/// One run of CopyRange.
class RangeCopier {
public:
    RangeCopier(song::Song& song, const TickRange& range)
        : song_(song),
          range_(range),
          begin_(PlacesAt(song, range.start)),
          end_(PlacesAt(begin_, range.end)),
          destination_(PlacesAt(song, range.destination)),
          seam_(song) {}

    SeamReport Run(bool bringState, const NoteFaultListener& listener) {
        std::array<std::int32_t, 3> ticks{range_.start, range_.end, range_.destination};
        std::ranges::sort(ticks);
        const auto at = [&](std::int32_t tick) {
            return static_cast<std::size_t>(std::ranges::find(ticks, tick) - ticks.begin());
        };
        CarriedState in;
        CarriedState out;
        if (bringState) {
            CarryOver(in, out);
        }
        blocks_.resize(song_.tracks.size());
        for (std::size_t index = 0; index < song_.tracks.size(); ++index) {
            const auto notes = ScanNotes(song_.tracks[index], ticks, open_, listener);
            TakeBlock(index, notes[at(range_.start)]);
            OpenDestination(index, notes[at(range_.destination)]);
        }
        const std::int32_t behind = range_.destination + range_.Length();
        InsertAtSeam(song_, destination_, range_.destination, in);
        for (std::size_t index = 0; index < song_.tracks.size(); ++index) {
            PutBlock(index, behind);
        }
        InsertAtSeam(song_, destination_, behind, out);
        for (std::size_t index = 0; index < song_.tracks.size(); ++index) {
            for (const EventLink note : blocks_[index].again) {
                InsertBefore(song_.tracks[index], destination_[index], note);
            }
        }
        return FinishSeams(song_, seam_, Joined(std::move(in), out));
    }

private:
    // What goes from the source to the destination in one track.
    struct Block {
        std::vector<EventLink> events;
        /// Notes of the block that sound at its end.
        std::vector<EventLink> open;
        /// Notes of the destination that begin again behind the block.
        std::vector<EventLink> again;
    };

    void CarryOver(CarriedState& in, CarriedState& out) const {
        MusicState source;
        MusicState destination;
        source.Play(song_, {}, begin_);
        destination.Play(song_, {}, destination_);
        in = Carry({destination, source}, song_, begin_, range_.start, false);
        source.Play(song_, begin_, end_);
        out = Carry({std::move(source), std::move(destination)}, song_, destination_,
                    range_.destination, false);
    }

    // Copies the range; note-offs stay out that end none of its notes.
    void TakeBlock(std::size_t index, const NotesAtTick& start) {
        Block& block = blocks_[index];
        block.events = seam_.BeginAgain(start.Across(), range_.destination);
        open_.Clear();
        for (const EventLink note : block.events) {
            open_.Take(note);
        }
        for (EventLink event = begin_[index]; event != end_[index]; event = event->next) {
            const bool isOff = event->Command() == song::kNoteOff;
            if (event->length <= 0 && event->status != song::kMeta) {
                continue; // removed
            }
            if (isOff && (start.EndsHere(event) || !open_.Sounds(*event))) {
                continue;
            }
            const EventLink copy = CopyEvent(*event, song_.pool);
            copy->tick += range_.destination - range_.start;
            open_.Take(copy);
            block.events.push_back(copy);
        }
        block.open = open_.All();
    }

    // Ends the notes that sound at the destination.
    void OpenDestination(std::size_t index, const NotesAtTick& notes) {
        song::Track& track = song_.tracks[index];
        EventLink& place = destination_[index];
        const EventLink before = place->prev;
        blocks_[index].again =
            seam_.BeginAgain(notes.Across(), range_.destination + range_.Length());
        RemoveEndings(song_, track, place, notes);
        place = before->next;
        seam_.Close(track, place, range_.destination, notes.open);
    }

    void PutBlock(std::size_t index, std::int32_t behind) {
        song::Track& track = song_.tracks[index];
        const EventLink place = destination_[index];
        for (const EventLink event : blocks_[index].events) {
            InsertBefore(track, place, event);
        }
        seam_.Close(track, place, behind, blocks_[index].open);
        MoveEvents(place, range_.Length());
    }

    song::Song& song_;
    TickRange range_;
    CutPlaces begin_;
    CutPlaces end_;
    CutPlaces destination_;
    SeamNotes seam_;
    OpenNotes open_;
    std::vector<Block> blocks_;
};

} // namespace

bool HasRoomFor(const song::Song& song, const TickRange& range) {
    return std::int64_t{song.songLength} + range.Length() <= std::int64_t{song::kMostTick};
}

SeamReport CopyRange(song::Song& song, const TickRange& range, bool bringState,
                     const NoteFaultListener& listener) {
    return RangeCopier(song, range).Run(bringState, listener);
}

} // namespace tracksmith::editing
