#include "song/note_length.h"

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <iterator>
#include <utility>

#include "song/drum_channels.h"
#include "song/event_chain.h"
#include "song/note_pairing.h"
#include "song/song_position.h"

namespace tracksmith::song {
namespace {

/// Moves note-offs of one track after the other to later places. What is on its way is held back
/// until the walk comes to its place, so that a track is walked over once, however many move.
class NoteEndMover {
public:
    /// Makes room for `most` note-offs of one track; throws std::bad_alloc. With `cut` a note ends
    /// at the latest where the next one of its channel and pitch begins.
    NoteEndMover(Song& song, std::int32_t minimum, bool cut, std::size_t most)
        : song_(song), minimum_(minimum), cut_(cut) {
        held_.reserve(most);
        order_.reserve(most);
        lines_.resize(NotePairing::kKeys);
    }

    /// Moves `ends` of `track`, which are in chain order; returns how many are later now.
    std::int64_t Run(Track& track, std::span<const NoteEnd> ends) {
        track_ = &track;
        EventLink event = ends.front().off;
        std::size_t next = 0;
        while (event) {
            const EventLink behind = event->next;
            PlaceBefore(event);
            if (next < ends.size() && event == ends[next].off) {
                ++next;
                Take(event);
            }
            event = !order_.empty() ? behind : next < ends.size() ? ends[next].off : EventLink();
        }
        for (const Held& held : held_) {
            lines_[NotePairing::KeyOf(held.off->status, held.off->data1)] = {};
        }
        held_.clear();
        return std::exchange(lengthened_, 0);
    }

private:
    static constexpr std::uint32_t kNone = 0xFFFF'FFFF;

    struct Held {
        EventLink off;
        std::int64_t tick = 0; // where it should go
        std::int32_t onTick = 0;
        std::uint32_t nextOfKey = kNone;
        bool placed = false;
    };
    // The held note-offs of a pitch, oldest first.
    struct Line {
        std::uint32_t first = kNone;
        std::uint32_t last = kNone;
    };

    void Take(EventLink off) {
        const std::int32_t onTick = off->noteOnLink->tick;
        const std::int64_t tick = std::int64_t{onTick} + minimum_;
        if (tick <= off->tick) {
            return;
        }
        if (order_.empty() && off->next && tick < off->next->tick) {
            SetTick(off, tick);
            return;
        }
        UnlinkEvent(*track_, off);
        const auto index = static_cast<std::uint32_t>(held_.size());
        held_.push_back({off, tick, onTick});
        order_.push_back(index);
        std::push_heap(order_.begin(), order_.end(), Later{held_});
        Line& line = lines_[NotePairing::KeyOf(off->status, off->data1)];
        (line.first == kNone ? line.first : held_[line.last].nextOfKey) = index;
        line.last = index;
    }

    // Links in what belongs in front of `event`.
    void PlaceBefore(EventLink event) {
        const bool isEnd = !event->next;
        while (!order_.empty() && (isEnd || held_[order_.front()].tick < event->tick)) {
            Held& held = held_[order_.front()];
            std::pop_heap(order_.begin(), order_.end(), Later{held_});
            order_.pop_back();
            if (!held.placed) {
                Place(held, event, std::min<std::int64_t>(held.tick, song_.songLength));
            }
        }
        if (cut_ && event->IsNoteOn() && event->length > 0) {
            Cut(event);
        }
    }

    void Cut(EventLink noteOn) {
        Line& line = lines_[NotePairing::KeyOf(noteOn->status, noteOn->data1)];
        while (line.first != kNone) {
            Held& held = held_[line.first];
            if (!held.placed && held.onTick == noteOn->tick) {
                return; // begins with it
            }
            if (!held.placed) {
                Place(held, noteOn, noteOn->tick);
            }
            line.first = held.nextOfKey;
        }
    }

    void Place(Held& held, EventLink before, std::int64_t tick) {
        held.placed = true;
        SetTick(held.off, tick);
        InsertAfter(*track_, before->prev, held.off);
    }

    void SetTick(EventLink off, std::int64_t tick) {
        lengthened_ += tick > off->tick ? 1 : 0;
        off->tick = static_cast<std::int32_t>(tick);
        if (song_.timeZoneCount > 0) {
            off->timeMs = static_cast<std::int32_t>(TickToMs(song_, tick));
        }
    }

    // The earliest is at the front of the heap, of equal ones the one that was held first.
    struct Later {
        const std::vector<Held>& held;
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return held[a].tick != held[b].tick ? held[a].tick > held[b].tick : a > b;
        }
    };

    Song& song_;
    std::int32_t minimum_;
    bool cut_;
    Track* track_ = nullptr;
    std::vector<Held> held_;
    std::vector<std::uint32_t> order_;
    std::vector<Line> lines_;
    std::int64_t lengthened_ = 0;
};

// Without those on channels that are left alone; track by track, which they are not in a song that
// was split while it was read.
std::vector<NoteEnd> ThoseToMove(const Song& song, std::span<const NoteEnd> ends,
                                 const NoteLengthOptions& options) {
    const auto drums = options.exceptDrums ? DrumChannels(song) : std::bitset<kMidiChannels>();
    std::vector<NoteEnd> chosen;
    chosen.reserve(ends.size());
    std::ranges::copy_if(ends, std::back_inserter(chosen), [&](const NoteEnd& end) {
        return song.tracks[static_cast<std::size_t>(end.track)].ignored == 0 &&
               !drums[end.off->Channel()];
    });
    std::ranges::stable_sort(chosen, {}, &NoteEnd::track);
    return chosen;
}

std::int64_t Lengthen(Song& song, std::span<const NoteEnd> ends, const NoteLengthOptions& options,
                      bool cut) {
    if (options.minimum <= 0 || ends.empty()) {
        return 0;
    }
    const std::vector<NoteEnd> chosen = ThoseToMove(song, ends, options);
    NoteEndMover mover(song, options.minimum, cut, chosen.size());
    std::int64_t lengthened = 0;
    for (auto first = chosen.begin(); first != chosen.end();) {
        const auto behind = std::find_if(
            first, chosen.end(), [&](const NoteEnd& end) { return end.track != first->track; });
        lengthened += mover.Run(song.tracks[static_cast<std::size_t>(first->track)],
                                std::span(first, behind));
        first = behind;
    }
    return lengthened;
}

} // namespace

std::vector<NoteEnd> FindShortNotes(Song& song, std::int32_t minimum) {
    std::vector<NoteEnd> ends;
    for (std::size_t index = 0; index < song.tracks.size(); ++index) {
        Track& track = song.tracks[index];
        for (EventLink event = track.first; track.ignored == 0 && event; event = event->next) {
            if (event->noteOnLink && event->tick - event->noteOnLink->tick < minimum) {
                ends.push_back({event, static_cast<std::int32_t>(index)});
            }
        }
    }
    return ends;
}

std::int64_t CheckForZeroLength(Song& song, const NoteLengthOptions& options) {
    return Lengthen(song, FindShortNotes(song, options.minimum), options, false);
}

std::int64_t LengthenLoadedNotes(Song& song, std::span<const NoteEnd> ends,
                                 const NoteLengthOptions& options) {
    return Lengthen(song, ends, options, true);
}

} // namespace tracksmith::song
