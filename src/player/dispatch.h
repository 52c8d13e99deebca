#pragma once

#include <cstdint>

#include "player/channels_in_effect.h"
#include "player/due_queue.h"
#include "player/event_sender.h"
#include "player/pass_state.h"
#include "player/play_position.h"
#include "player/preparation.h"
#include "player/stopwatch.h"
#include "song/song.h"

namespace tracksmith::player {

/// How long playing goes on behind the last event, in milliseconds.
inline constexpr std::int64_t kEndDelayMs = 3300;
/// How long before the loop end it jumps back, in milliseconds.
inline constexpr std::int64_t kLoopMarginMs = 10;
/// Returned by a pass that came behind the song's end.
inline constexpr std::int64_t kSongOver = -1;
/// Returned by a pass that was given up while it was in a driver: nothing may be touched any more.
inline constexpr std::int64_t kGivenUp = -2;

/// A stretch of the song that is played again and again.
struct PlayLoop {
    bool on = false;
    std::int32_t startTick = 0;
    std::int32_t endTick = 0;
    /// The same by the time map in force.
    std::int64_t startMs = 0;
    std::int64_t endMs = 0;

    /// On, and long enough to be played.
    bool Active() const { return on && endMs > startMs + kLoopMarginMs; }
};

/// The heart of playing: sends what is due, jumps back at the loop's end, finds the song's end.
/// Pass belongs to the playback thread and allocates nothing; all else is for the owner's thread
/// while no pass runs.
class Dispatcher {
public:
    Dispatcher(song::Song& song, PlayPosition& position, EventSender& sender,
               ChannelsInEffect& inEffect, StateKeeper& keeper)
        : song_(&song),
          position_(position),
          sender_(sender),
          inEffect_(inEffect),
          keeper_(keeper),
          preparation_(sender) {}

    /// Sends all events that are due now. Returns the moment on the stopwatch (microseconds) when
    /// something is to be done next, kSongOver or kGivenUp. Ends early when passes are forbidden
    /// meanwhile.
    std::int64_t Pass(PassState& pass) noexcept;

    /// Another song is played from now on: its times, loop and cursors are to be taken over.
    void SetSong(song::Song& song) { song_ = &song; }
    /// Takes the tracks' play cursors over. Allocates for songs with more tracks than before.
    void CursorsMoved();
    /// Takes over that event times have changed, loop included. Allocates nothing.
    void TimesChanged() noexcept;

    /// Sets the loop, its ends in any order, and finds its events and what is in effect at its
    /// start. Throws std::bad_alloc.
    void SetLoop(bool on, std::int32_t startTick, std::int32_t endTick);
    const PlayLoop& Loop() const { return loop_; }
    /// Largest event time in milliseconds.
    std::int64_t SongEndTime() const { return songEndTime_; }

    /// Begins to prepare ports: what needs no pause is sent at once, the rest by the passes. The
    /// position is not to run while music waits. Throws std::bad_alloc.
    void Prepare(PreparationPlan plan);
    Preparation& Preparing() { return preparation_; }
    const Preparation& Preparing() const { return preparation_; }

private:
    bool Prepared(PassState& pass) noexcept;
    std::int64_t PlayDue(PassState& pass) noexcept;
    void FillQueue() noexcept;
    bool SendFirst(PassState& pass) noexcept;
    bool JumpToLoopStart(PassState& pass) noexcept;
    std::int64_t NextMoment() const noexcept;
    /// The last position in milliseconds that the loop lets be played.
    std::int64_t LoopLimit() const { return loop_.endMs - kLoopMarginMs + 1; }

    song::Song* song_;
    PlayPosition& position_;
    EventSender& sender_;
    ChannelsInEffect& inEffect_;
    StateKeeper& keeper_;
    Preparation preparation_;
    DueQueue queue_;
    PlayLoop loop_;
    // What is in effect at the loop's start.
    ChaseMemory loopStart_;
    std::int64_t songEndTime_ = 0;
};

} // namespace tracksmith::player
