#include "player/dispatch.h"

#include <algorithm>
#include <utility>

#include "song/song_position.h"
#include "song/time_map.h"

namespace tracksmith::player {

std::int64_t Dispatcher::Pass(PassState& pass) noexcept {
    if (!Prepared(pass)) {
        return kGivenUp;
    }
    if (preparation_.HoldsMusic()) {
        return preparation_.NextUs();
    }
    const std::int64_t next = PlayDue(pass);
    // A pass that was given up touches nothing.
    return next >= 0 && preparation_.Active() ? std::min(next, preparation_.NextUs()) : next;
}

// Goes on with what is being prepared. False when the pass was given up.
bool Dispatcher::Prepared(PassState& pass) noexcept {
    const bool held = preparation_.HoldsMusic();
    if (preparation_.Active() && !preparation_.Step(position_.NowUs(), &pass)) {
        return false;
    }
    if (held && !preparation_.HoldsMusic()) {
        position_.Run();
    }
    return true;
}

void Dispatcher::Prepare(PreparationPlan plan) {
    preparation_.Begin(std::move(plan));
    static_cast<void>(preparation_.Step(position_.NowUs(), nullptr));
}

std::int64_t Dispatcher::PlayDue(PassState& pass) noexcept {
    const std::int64_t positionMs = position_.Ms();
    const bool looping = loop_.Active();
    // A pass that comes late plays nothing from behind the loop.
    const std::int64_t limit = looping ? std::min(positionMs, LoopLimit()) : positionMs;
    while (!queue_.Empty() && queue_.First().dueMs <= limit) {
        if (pass.Forbidden()) {
            return Stopwatch::kForever;
        }
        if (!SendFirst(pass)) {
            return kGivenUp;
        }
    }
    if (looping && positionMs >= LoopLimit()) {
        if (!JumpToLoopStart(pass)) {
            return kGivenUp;
        }
    } else if (positionMs > songEndTime_ + kEndDelayMs) {
        return kSongOver;
    }
    return NextMoment();
}

// The cursor moves on first: sending may hang, and the song be another one when it returns.
bool Dispatcher::SendFirst(PassState& pass) noexcept {
    song::Track& track = song_->tracks[queue_.First().track];
    const song::EventLink event = track.cursor;
    track.cursor = event->next;
    if (track.cursor) {
        queue_.ReplaceFirst(song::DueOrder::KeyOf(*track.cursor, track, queue_.First().track));
    } else {
        queue_.RemoveFirst();
    }
    return sender_.Send(track, event, pass);
}

bool Dispatcher::JumpToLoopStart(PassState& pass) noexcept {
    for (song::Track& track : song_->tracks) {
        track.cursor = track.loopCursor;
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        inEffect_.Set(channel, loopStart_.controls[channel]);
    }
    keeper_.Set(loopStart_.channels);
    position_.MoveTo(loop_.startMs * 1000);
    FillQueue();
    return sender_.SilenceAll(&pass) &&
           sender_.BringPorts(PortSet().set(), Extent::Difference, &pass);
}

std::int64_t Dispatcher::NextMoment() const noexcept {
    std::int64_t next = songEndTime_ + kEndDelayMs + 1;
    if (!queue_.Empty()) {
        next = std::min(next, queue_.First().dueMs);
    }
    if (loop_.Active()) {
        next = std::min(next, LoopLimit());
    }
    return position_.MomentOf(next);
}

void Dispatcher::FillQueue() noexcept {
    queue_.Clear();
    for (std::size_t index = 0; index < song_->tracks.size(); ++index) {
        const song::Track& track = song_->tracks[index];
        if (track.cursor && track.ignored == 0) {
            queue_.Add(song::DueOrder::KeyOf(*track.cursor, track, index));
        }
    }
}

void Dispatcher::CursorsMoved() {
    queue_.Reserve(song_->tracks.size());
    FillQueue();
}

void Dispatcher::TimesChanged() noexcept {
    songEndTime_ = song::LargestTime(*song_);
    if (song_->timeZoneCount > 0) {
        loop_.startMs = song::TickToMs(*song_, loop_.startTick);
        loop_.endMs = song::TickToMs(*song_, loop_.endTick);
    }
    FillQueue();
}

void Dispatcher::SetLoop(bool on, std::int32_t startTick, std::int32_t endTick) {
    loop_ = {on, std::min(startTick, endTick), std::max(startTick, endTick)};
    TimesChanged();
    for (song::Track& track : song_->tracks) {
        track.loopCursor = FirstDue(track, loop_.startMs);
    }
    if (loop_.on) {
        loopStart_ = CollectChase(*song_, sender_.Rules(), &song::Track::loopCursor);
    }
}

} // namespace tracksmith::player
