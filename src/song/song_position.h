#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "song/time_map_record.h"

namespace tracksmith::song {

/// A place in the song in musical terms: measure and beat count from 1, tick from 0.
struct MeasureBeatTick {
    std::int64_t measure = 1;
    std::int64_t beat = 1;
    std::int64_t tick = 0;
    friend bool operator==(const MeasureBeatTick&, const MeasureBeatTick&) = default;
};

/// Ticks of one beat of the time signature's note value: division * 4 / denominator, at least 1.
std::int32_t TicksPerBeat(const TimeMap& map, const TimeZoneEntry& zone);

/// Index of the last zone that starts at or before `tick` (in ticks); 0 when there is none. The
/// song must have a time map.
std::size_t ZoneOfTick(const TimeMap& map, std::int64_t tick);

/// Clock time in milliseconds of `tick`, halves rounded to even.
std::int64_t TickToMs(const TimeMap& map, std::int64_t tick);

/// The tick that sounds at `ms` milliseconds: the last whose clock time is not after it.
std::int64_t MsToTick(const TimeMap& map, std::int64_t ms);

/// `distance` ticks after the start of `zone`, its ticks carried into beats by the denominator
/// `carryDenominator` (an eighth-note beat for 8, a quarter-note beat otherwise).
MeasureBeatTick PositionInZone(const TimeMap& map, const TimeZoneEntry& zone, std::int64_t distance,
                               std::uint8_t carryDenominator);

/// The place of `tick` in measures and beats.
MeasureBeatTick GetMeasureBeatFromSongPos(const TimeMap& map, std::int64_t tick);

/// The place that is reached `ms` milliseconds after the song's start.
MeasureBeatTick GetMeasureBeatFromTime(const TimeMap& map, std::int64_t ms);

/// Length in ticks of the measure in which `tick` lies.
std::int64_t TicksInMeasureAtPos(const TimeMap& map, std::int64_t tick);

/// `tick` as position text, for example "012.03.005", padded to the song's position width.
std::string SongPositionToMTC(const TimeMap& map, std::int32_t tick);

/// The tick of a position; -1 when it is invalid or not before the song's end. Inverse of
/// SongPositionToMTC.
std::int32_t MTCToSongPosition(const TimeMap& map, std::int32_t measure, std::int32_t beat,
                               std::int32_t tick);

/// Clock time as "3:45" or, from an hour on, "1:03:45". `withMs` adds ".678".
std::string ClockText(std::int64_t ms, bool withMs = false);

} // namespace tracksmith::song
