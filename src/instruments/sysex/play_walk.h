#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "song/song.h"
#include "song/track_walk.h"

namespace tracksmith::instruments {

/// A place of the song in the order of playing: at the same tick the lower track comes first.
struct PlayPlace {
    std::int32_t tick = 0;
    std::int32_t track = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the comparison's own zero
    friend auto operator<=>(const PlayPlace&, const PlayPlace&) = default;
};

/// A TrackWalk by tick over all tracks that are not ignored, of a song that is changed meanwhile.
/// Events may be put in or moved behind the walk's place at any time, and before it through Leave;
/// Refresh then makes the walk see what comes next. A copy goes its own way. Throws std::bad_alloc.
class PlayWalk {
public:
    /// Stands before the first event of `song`, which must outlive the walk.
    explicit PlayWalk(song::Song& song) : song_(song), passed_(song.tracks.size()) { Refresh(); }
    PlayWalk(const PlayWalk& other) : song_(other.song_), passed_(other.passed_) { Refresh(); }
    PlayWalk& operator=(const PlayWalk&) = delete;

    bool AtEnd() const { return walk_->Peek() == nullptr; }
    /// The event that comes next; only before the end.
    song::EventLink Event() const { return song::LinkTo(*walk_->Peek()); }
    PlayPlace Place() const { return {walk_->Peek()->tick, Track()}; }
    /// Its track.
    std::int32_t Track() const { return static_cast<std::int32_t>(walk_->NextTrack()); }

    /// Passes the event that comes next and returns it; only before the end.
    song::EventLink Take() {
        const std::size_t track = walk_->NextTrack();
        const song::EventLink event = song::LinkTo(*walk_->Take());
        passed_[track] = event;
        return event;
    }

    /// As TrackWalk::TakeRun, with links to the events.
    template <typename TakeOne>
    void TakeRun(TakeOne&& take) {
        song::EventLink last;
        const std::size_t track = walk_->NextTrack();
        walk_->TakeRun([&](song::MidiEvent& taken) {
            const song::EventLink event = song::LinkTo(taken);
            if (!take(event)) {
                return false;
            }
            last = event;
            return true;
        });
        if (last) {
            passed_[track] = last;
        }
    }

    /// The first event of the track that the walk has not passed; null behind its last.
    song::EventLink Behind(std::int32_t track) const {
        return Rest{&passed_}.BeginOf(song_.tracks[static_cast<std::size_t>(track)],
                                      static_cast<std::size_t>(track));
    }

    /// Tells that `event`, which is in the track still, is about to be taken out of it.
    void Leave(song::EventLink event, std::int32_t track) {
        song::EventLink& passed = passed_[static_cast<std::size_t>(track)];
        if (passed == event) {
            passed = event->prev;
        }
    }

    /// Passes the events of the track up to `event`, which have been put in at the walk's place.
    void Skip(song::EventLink event, std::int32_t track) {
        passed_[static_cast<std::size_t>(track)] = event;
    }

    /// Finds the next event again after changes of the song.
    void Refresh() { walk_ = std::make_unique<Walk>(song_, Rest{&passed_}); }

private:
    // What was not passed yet of the tracks that count.
    struct Rest : song::EveryEvent {
        explicit Rest(const std::vector<song::EventLink>* passedEvents) : passed(passedEvents) {}
        static bool Enters(const song::Track& track) { return track.ignored == 0; }
        song::EventLink BeginOf(song::Track& track, std::size_t index) const {
            const song::EventLink last = (*passed)[index];
            return last ? last->next : track.first;
        }
        const std::vector<song::EventLink>* passed;
    };

    using Walk = song::TrackWalk<song::TickOrder, Rest, song::Song>;

    song::Song& song_;
    std::vector<song::EventLink> passed_; // the last of each track, null for none
    std::unique_ptr<Walk> walk_;
};

} // namespace tracksmith::instruments
