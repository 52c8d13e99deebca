#include "song/song_position.h"

#include <algorithm>

#include "song/clock.h"

namespace tracksmith::song {
namespace {

std::int64_t HalfDivision(const TimeMap& map) {
    return std::max(EffectiveDivision(map) / 2, 1);
}

// A beat is a quarter note for every denominator but 8, where it is an eighth.
std::int64_t CarryLimit(const TimeMap& map, std::uint8_t denominator) {
    return denominator == 8 ? HalfDivision(map) : EffectiveDivision(map);
}

std::int64_t PowerOfTen(std::int32_t exponent) {
    std::int64_t power = 1;
    for (; exponent > 0; --exponent) {
        power *= 10;
    }
    return power;
}

// A place as one number that sorts like the place.
std::int64_t PositionKey(const TimeMap& map, const MeasureBeatTick& place) {
    const std::int64_t beatUnit = PowerOfTen(map.divisionDigits);
    return (place.measure * 100 + place.beat) * beatUnit + place.tick;
}

std::int64_t ZoneKey(const TimeMap& map, const TimeZoneEntry& zone) {
    return PositionKey(map, {zone.measure, zone.beat, zone.beatTick});
}

void PadFront(std::string& text, std::size_t width) {
    if (text.size() < width) {
        text.insert(0, width - text.size(), '0');
    }
}

} // namespace

std::int32_t TicksPerBeat(const TimeMap& map, const TimeZoneEntry& zone) {
    return std::max(EffectiveDivision(map) * 4 / std::max<std::int32_t>(zone.denominator, 1), 1);
}

std::size_t ZoneOfTick(const TimeMap& map, std::int64_t tick) {
    const auto begin = map.timeZones.begin();
    const auto end = begin + map.timeZoneCount;
    const auto behind = std::upper_bound(
        begin, end, tick, [](std::int64_t t, const TimeZoneEntry& zone) { return t < zone.tick; });
    return behind == begin ? 0 : static_cast<std::size_t>(behind - begin) - 1;
}

std::int64_t TickToMs(const TimeMap& map, std::int64_t tick) {
    const TimeZoneEntry& zone = map.timeZones[ZoneOfTick(map, tick)];
    return MsBehind(zone.startMs, zone.msPerTick, tick - zone.tick);
}

std::int64_t MsToTick(const TimeMap& map, std::int64_t ms) {
    // Many ticks may share one millisecond, so the last one is searched for, not calculated.
    std::int64_t low = 0;
    std::int64_t high = std::max(map.songLength, 0);
    while (low < high) {
        const std::int64_t middle = low + (high - low + 1) / 2;
        if (TickToMs(map, middle) <= ms) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return low;
}

MeasureBeatTick PositionInZone(const TimeMap& map, const TimeZoneEntry& zone, std::int64_t distance,
                               std::uint8_t carryDenominator) {
    const std::int64_t perBeat = TicksPerBeat(map, zone);
    const std::int64_t numerator = std::max<std::int64_t>(zone.numerator, 1);
    const std::int64_t beats = distance / perBeat;
    MeasureBeatTick place{zone.measure + beats / numerator, zone.beat + beats % numerator,
                          zone.beatTick + distance % perBeat};
    const std::int64_t limit = CarryLimit(map, carryDenominator);
    place.beat += place.tick / limit;
    place.tick %= limit;
    if (place.beat > numerator) {
        const std::int64_t measures = (place.beat - 1) / numerator;
        place.measure += measures;
        place.beat -= measures * numerator;
    }
    return place;
}

MeasureBeatTick GetMeasureBeatFromSongPos(const TimeMap& map, std::int64_t tick) {
    const TimeZoneEntry& zone = map.timeZones[ZoneOfTick(map, tick)];
    return PositionInZone(map, zone, std::max<std::int64_t>(tick - zone.tick, 0), zone.denominator);
}

MeasureBeatTick GetMeasureBeatFromTime(const TimeMap& map, std::int64_t ms) {
    return GetMeasureBeatFromSongPos(map, MsToTick(map, ms));
}

std::int64_t TicksInMeasureAtPos(const TimeMap& map, std::int64_t tick) {
    const TimeZoneEntry& zone = map.timeZones[ZoneOfTick(map, tick)];
    return std::int64_t{TicksPerBeat(map, zone)} * std::max<std::int64_t>(zone.numerator, 1);
}

std::string SongPositionToMTC(const TimeMap& map, std::int32_t tick) {
    const MeasureBeatTick place = GetMeasureBeatFromSongPos(map, tick);
    const auto digits = static_cast<std::size_t>(map.divisionDigits);
    std::string text = std::to_string(place.tick);
    PadFront(text, digits);
    text = std::to_string(place.beat) + "." + text;
    if (text.size() < digits + 3) {
        text.insert(0, 1, '0');
    }
    text = std::to_string(place.measure) + "." + text;
    PadFront(text, static_cast<std::size_t>(map.positionWidth));
    return text;
}

std::int32_t MTCToSongPosition(const TimeMap& map, std::int32_t measure, std::int32_t beat,
                               std::int32_t tick) {
    if (measure < 1 || beat < 1 || tick < 0 || tick > EffectiveDivision(map)) {
        return -1;
    }
    const std::int64_t key = PositionKey(map, {measure, beat, tick});
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(map.timeZoneCount); ++i) {
        const TimeZoneEntry& zone = map.timeZones[i];
        if (ZoneKey(map, zone) > key || key >= ZoneKey(map, map.timeZones[i + 1])) {
            continue;
        }
        const std::int64_t beats =
            (std::int64_t{measure} - zone.measure) * zone.numerator + beat - zone.beat;
        const std::int64_t result = beats * EffectiveDivision(map) * 4 / zone.denominator +
                                    zone.tick + tick - zone.beatTick;
        return result >= 0 && result < map.songLength ? static_cast<std::int32_t>(result) : -1;
    }
    return -1;
}

std::string ClockText(std::int64_t ms, bool withMs) {
    const std::int64_t total = std::max<std::int64_t>(ms, 0);
    const auto two = [](std::int64_t value) {
        std::string text = std::to_string(value);
        PadFront(text, 2);
        return text;
    };
    const std::int64_t seconds = total / 1000;
    const std::int64_t hours = seconds / 3600;
    const std::int64_t minutes = seconds / 60 % 60;
    std::string text =
        hours > 0 ? std::to_string(hours) + ":" + two(minutes) : std::to_string(minutes);
    text += ':';
    text += two(seconds % 60);
    if (withMs) {
        std::string rest = std::to_string(total % 1000);
        PadFront(rest, 3);
        text += '.';
        text += rest;
    }
    return text;
}

} // namespace tracksmith::song
