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

// For a song without time zones: those up to `tick` are made of its lists.
std::int64_t MsFromLists(const song::Song& song, std::int32_t tick) {
    song::Song start;
    start.division = song.division;
    start.songLength = song.songLength;
    CopyUpTo(tick, song.tempos, start.tempos);
    CopyUpTo(tick, song.timeSignatures, start.timeSignatures);
    song::CompleteTempoTimeSign(start);
    song::SetTimeZones(start);
    return song::TickToMs(start, tick);
}

} // namespace

std::int32_t MsOfTick(const song::Song& song, std::int32_t tick) {
    const std::int64_t ms =
        song.timeZoneCount > 0 ? song::TickToMs(song, tick) : MsFromLists(song, tick);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(ms, 0, std::numeric_limits<std::int32_t>::max()));
}

} // namespace tracksmith::instruments
