#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "song/clock.h"

namespace tracksmith::song {

/// Clock times while events are being decoded. The first track adds the changes of tempo and time
/// signature as they come; the tracks behind it follow the finished list. Counts exactly as the
/// time zones of the finished song do.
class StreamingClock {
public:
    explicit StreamingClock(std::int32_t division);

    /// Begins a track; the list of changes is complete after the first one.
    void BeginTrack();

    /// A change at `tick`, not before the last one: tempo in microseconds per quarter note, 0 for a
    /// change of time signature only.
    void AddChange(std::int32_t tick, std::int32_t tempo);

    /// Clock time of `tick` in milliseconds; ticks never fall within a track.
    std::int32_t MsAt(std::int32_t tick) {
        if (tick >= nextTick_) [[unlikely]] {
            EnterForward(tick);
        }
        return MsBehind(startMs_, msPerTick_, tick - tick_);
    }

    /// Tick of the last change.
    std::int32_t LastChange() const { return changes_.back().tick; }

private:
    struct Change {
        std::int32_t tick = 0;
        float msPerTick = 0;
        std::int32_t startMs = 0;
    };

    void Enter(std::size_t index);
    void EnterForward(std::int32_t tick);

    std::int32_t division_;
    std::vector<Change> changes_;
    double sumMs_ = 0;
    // The change in force, taken out of the list for speed.
    std::size_t current_ = 0;
    std::int32_t tick_ = 0;
    std::int32_t startMs_ = 0;
    float msPerTick_ = 0;
    std::int32_t nextTick_ = std::numeric_limits<std::int32_t>::max();
};

} // namespace tracksmith::song
