#include <algorithm>
#include <memory>
#include <utility>

#include "app/session/transport.h"
#include "song/practice_tempo.h"
#include "song/song_position.h"

// Another state of the song is heard for a while.

namespace tracksmith::session {

bool Transport::Hear(std::shared_ptr<OtherSong> other) {
    return other == other_ || (workspace_.hasSong && Told(HearOther(std::move(other))));
}

bool Transport::HearOther(std::shared_ptr<OtherSong> other) {
    const std::int32_t tick = Tick();
    const LoopRange loop = loop_.value_or(LoopRange{});
    const auto map = Map();
    const auto former = std::exchange(other_, std::move(other));
    const player::SongPlace place{PlayedTick(tick), PlayedTick(loop.startTick),
                                  PlayedTick(loop.endTick),
                                  other_ ? other_->reset : song::EventLink()};
    bool done = false;
    try {
        done = player_.PlaySong(other_ ? &other_->song : nullptr, place);
    } catch (...) {
        other_ = former;
        throw;
    }
    if (!done) {
        other_ = former;
        return false;
    }
    ownMap_ = other_ ? map : nullptr;
    movedMs_ = player_.Position();
    movedTick_ = tick;
    listeners_.Tell(&SessionListener::OnHeardSong);
    listeners_.Tell(&SessionListener::OnPlace);
    return true;
}

std::int64_t Transport::Ms() const {
    return other_ ? song::TickToMs(*ownMap_, Tick()) : player_.Position();
}

std::shared_ptr<const song::TimeMap> Transport::Map() const {
    return other_ ? ownMap_ : player_.Place().map;
}

std::int32_t Transport::PlayedTick(std::int32_t tick) const {
    return other_ ? std::min(other_->places.ToEarlier(tick), other_->song.songLength) : tick;
}

std::int32_t Transport::OwnTick(std::int64_t played) const {
    const auto tick = static_cast<std::int32_t>(played);
    return other_ ? std::min(other_->places.ToLater(tick), workspace_.song.songLength) : tick;
}

} // namespace tracksmith::session
