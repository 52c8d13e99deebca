#include "song/streaming_clock.h"

#include "song/song.h"
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
