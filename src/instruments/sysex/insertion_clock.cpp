#include "instruments/sysex/insertion_clock.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "song/song_position.h"
#include "song/time_map.h"

namespace tracksmith::instruments {
namespace {

template <typename Entry>
void CopyUpTo(std::int32_t tick, const std::vector<Entry>& from, std::vector<Entry>& to) {
    std::copy_if(from.begin(), from.end(), std::back_inserter(to),
                 [tick](const Entry& entry) { return entry.tick >= 0 && entry.tick <= tick; });
}

// Gives `target` time zones made of the lists up to `tick`.
void MapUpTo(std::int32_t tick, const song::Song& song, song::Song& target) {
    target.division = song.division;
    target.songLength = song.songLength;
    CopyUpTo(tick, song.tempos, target.tempos);
    CopyUpTo(tick, song.timeSignatures, target.timeSignatures);
    song::CompleteTempoTimeSign(target);
    song::SetTimeZones(target);
}

std::int32_t ClampedMs(const song::Song& mapped, std::int32_t tick) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        song::TickToMs(mapped, tick), 0, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::int32_t MsOfTick(const song::Song& song, std::int32_t tick) {
    if (song.timeZoneCount > 0) {
        return ClampedMs(song, tick);
    }
    song::Song start;
    MapUpTo(tick, song, start);
    return ClampedMs(start, tick);
}

InsertionClock::InsertionClock(const song::Song& song) : song_(song) {
    if (song.timeZoneCount == 0) {
        MapUpTo(std::numeric_limits<std::int32_t>::max(), song, own_.emplace());
    }
}

std::int32_t InsertionClock::MsOf(std::int32_t tick) const {
    return ClampedMs(Mapped(), tick);
}

std::int32_t InsertionClock::FirstTickAt(std::int32_t ms) const {
    const std::int64_t before = song::MsToTick(Mapped(), std::int64_t{ms} - 1);
    const auto tick = static_cast<std::int32_t>(before);
    return MsOf(tick) >= ms ? tick : std::min(tick + 1, song_.songLength);
}

std::int32_t InsertionClock::LastTickBefore(std::int32_t tick) const {
    const std::int32_t ms = MsOf(tick);
    return ms == 0 ? -1
                   : std::min(tick - 1, static_cast<std::int32_t>(
                                            song::MsToTick(Mapped(), std::int64_t{ms} - 1)));
}

} // namespace tracksmith::instruments
