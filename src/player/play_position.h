#pragma once

#include <cstdint>
#include <memory>
#include <mutex>

#include "player/stopwatch.h"
#include "song/time_map_record.h"

namespace tracksmith::player {

/// Where the music is, with the time map by which it must be read. A map is never changed once it
/// is here.
struct PlayPlace {
    /// Position in whole milliseconds and in microseconds.
    std::int64_t ms = 0;
    std::int64_t us = 0;
    std::shared_ptr<const song::TimeMap> map;
};

/// The play position. While it runs, it is the stopwatch's time less an offset. Any thread; the
/// lock is only held for a few instructions.
class PlayPosition {
public:
    explicit PlayPosition(const Stopwatch& stopwatch);

    /// Microseconds from the song's start.
    std::int64_t Us() const;
    /// Whole milliseconds from the song's start, rounded down.
    std::int64_t Ms() const { return Us() / 1000; }
    /// The time map in force; never null.
    std::shared_ptr<const song::TimeMap> Map() const;
    /// Position and map that belong together.
    PlayPlace Place() const;
    /// The stopwatch's time (microseconds) at which `positionMs` is reached; only while it runs.
    std::int64_t MomentOf(std::int64_t positionMs) const;
    /// The stopwatch's time.
    std::int64_t NowUs() const { return stopwatch_.ElapsedUs(); }

    /// Lets the position run on from where it stands, or rest.
    void Run();
    void Rest();
    /// Moves it, running or not.
    void MoveTo(std::int64_t us);
    /// Moves it and puts another map in force; `map` then holds the former one, so that its memory
    /// is not released here.
    void MoveTo(std::int64_t us, std::shared_ptr<const song::TimeMap>& map);

private:
    std::int64_t UsLocked() const;
    void MoveLocked(std::int64_t us);

    const Stopwatch& stopwatch_;
    mutable std::mutex mutex_;
    bool running_ = false;
    std::int64_t restingUs_ = 0;
    std::int64_t startOffsetUs_ = 0; // stopwatch less position, while running
    std::shared_ptr<const song::TimeMap> map_;
};

} // namespace tracksmith::player
