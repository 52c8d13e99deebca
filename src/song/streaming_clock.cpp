#include "song/streaming_clock.h"

#include <algorithm>

#include "song/time_map.h"

namespace tracksmith::song {

StreamingClock::StreamingClock(std::int32_t division)
    : division_(division), msPerTick_(MsPerTick(kDefaultTempo, division)) {
    changes_.push_back({0, msPerTick_, 0});
}

void StreamingClock::BeginTrack() {
    Enter(0);
}

void StreamingClock::AddChange(std::int32_t tick, std::int32_t tempo) {
    const Change last = changes_.back();
    sumMs_ += static_cast<double>(tick - last.tick) * static_cast<double>(last.msPerTick);
    changes_.push_back(
        {tick, tempo == 0 ? last.msPerTick : MsPerTick(tempo, division_), RoundMs(sumMs_)});
    Enter(changes_.size() - 1);
}

// Mostly the next change is the one; a track that begins behind many changes must not pass them
// one by one.
void StreamingClock::EnterForward(std::int32_t tick) {
    Enter(current_ + 1);
    if (tick >= nextTick_) {
        const auto behind = std::upper_bound(
            changes_.begin() + static_cast<std::ptrdiff_t>(current_), changes_.end(), tick,
            [](std::int32_t at, const Change& change) { return at < change.tick; });
        Enter(static_cast<std::size_t>(behind - changes_.begin()) - 1);
    }
}

void StreamingClock::Enter(std::size_t index) {
    const Change& change = changes_[index];
    current_ = index;
    tick_ = change.tick;
    startMs_ = change.startMs;
    msPerTick_ = change.msPerTick;
    nextTick_ = index + 1 < changes_.size() ? changes_[index + 1].tick
                                            : std::numeric_limits<std::int32_t>::max();
}

} // namespace tracksmith::song
