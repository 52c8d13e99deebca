#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>

#include "song/clock.h"
#include "song/song_position.h"
#include "song/time_map.h"

// Merging tempos and time signatures into the zones of the time map, and placing them.

namespace tracksmith::song {
namespace {

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

template <typename Entry>
void StartAtZero(std::vector<Entry>& entries, const Entry& first) {
    if (entries.empty() || entries.front().tick != 0) {
        entries.insert(entries.begin(), first);
    }
}

// Halves are counted in quarters: 2/2 becomes 4/4.
void TurnHalvesIntoQuarters(std::vector<TimeSignatureEntry>& entries) {
    for (TimeSignatureEntry& entry : entries) {
        if (entry.denominator == 2) {
            entry.denominator = 4;
            entry.numerator = static_cast<std::uint8_t>(std::min(entry.numerator * 2, 255));
        }
    }
}

// The entries in tick order for merging; the lists themselves stay as they are. Unfilled ones count
// nowhere.
template <typename Entry>
std::vector<Entry> Sorted(const std::vector<Entry>& entries) {
    std::vector<Entry> sorted;
    sorted.reserve(entries.size());
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(sorted),
                 [](const Entry& entry) { return entry.tick >= 0; });
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Entry& a, const Entry& b) { return a.tick < b.tick; });
    return sorted;
}

template <typename Entry>
std::int64_t TickAt(const std::vector<Entry>& entries, std::size_t index) {
    return index < entries.size() ? entries[index].tick : kNever;
}

void SetTempo(TimeZoneEntry& zone, const TempoEntry& entry, std::int32_t division) {
    zone.tempo = TempoOrDefault(entry.tempo);
    zone.bpm = entry.bpm;
    zone.fileBpm = BpmOfTempo(entry.fileTempo);
    zone.msPerTick = MsPerTick(entry.tempo, division);
}

void SetTimeSignature(TimeZoneEntry& zone, const TimeSignatureEntry& entry) {
    zone.denominator = std::max<std::uint8_t>(entry.denominator, 1);
    zone.numerator = std::max<std::uint8_t>(entry.numerator, 1);
}

// Merges tempos and time signatures into zones; both lists start at tick 0. Goes on while either
// list has an entry within the song.
std::vector<TimeZoneEntry> MergeZones(const TimeMap& map) {
    const std::vector<TempoEntry> tempos = Sorted(map.tempos);
    const std::vector<TimeSignatureEntry> timeSignatures = Sorted(map.timeSignatures);
    const std::int32_t division = EffectiveDivision(map);
    std::vector<TimeZoneEntry> zones;
    std::size_t i = 0;
    std::size_t j = 0;
    do {
        TimeZoneEntry zone = zones.empty() ? TimeZoneEntry{} : zones.back();
        const std::int64_t tempoTick = TickAt(tempos, i);
        const std::int64_t timeSignatureTick = TickAt(timeSignatures, j);
        zone.tick = static_cast<std::int32_t>(std::min(tempoTick, timeSignatureTick));
        if (tempoTick <= timeSignatureTick) {
            SetTempo(zone, tempos[i++], division);
        }
        if (timeSignatureTick <= tempoTick) {
            SetTimeSignature(zone, timeSignatures[j++]);
        }
        zones.push_back(zone);
    } while (TickAt(tempos, i) <= map.songLength || TickAt(timeSignatures, j) <= map.songLength);
    return zones;
}

// The closing entry and one behind it, both like the last zone but beyond the song's end.
void CloseZones(TimeMap& map) {
    TimeZoneEntry closing = map.timeZones.back();
    closing.tick = map.songLength + 1;
    map.timeZones.push_back(closing);
    map.timeZoneCount = static_cast<std::int32_t>(map.timeZones.size());
    map.timeZones.push_back(closing);
}

template <typename Number>
Number Clamped(std::int64_t value) {
    return static_cast<Number>(
        std::clamp<std::int64_t>(value, 0, std::numeric_limits<Number>::max()));
}

std::int32_t UsPerBeat(const TimeZoneEntry& zone) {
    return Clamped<std::int32_t>(std::int64_t{zone.tempo} * 4 / zone.denominator);
}

void PlaceFirstZone(TimeZoneEntry& zone) {
    zone.measure = 1;
    zone.beat = 1;
    zone.beatTick = 0;
    zone.startMs = 0;
    zone.beatTickMs = 0;
    zone.usPerBeat = UsPerBeat(zone);
}

// The place of a zone behind the one before it; `sumMs` is its exact start in milliseconds.
void PlaceZone(const TimeMap& map, const TimeZoneEntry& before, TimeZoneEntry& zone, double sumMs) {
    const MeasureBeatTick place =
        PositionInZone(map, before, std::int64_t{zone.tick} - before.tick, zone.denominator);
    zone.measure = Clamped<std::int32_t>(place.measure);
    zone.beat = Clamped<std::uint8_t>(place.beat);
    zone.beatTick = Clamped<std::uint16_t>(place.tick);
    zone.startMs = RoundMs(sumMs);
    zone.beatTickMs =
        RoundMs(static_cast<double>(zone.beatTick) * static_cast<double>(before.msPerTick));
    zone.usPerBeat = UsPerBeat(zone);
}

void PlaceZones(TimeMap& map) {
    PlaceFirstZone(map.timeZones.front());
    double sumMs = 0;
    for (std::size_t k = 1; k < static_cast<std::size_t>(map.timeZoneCount); ++k) {
        const TimeZoneEntry& before = map.timeZones[k - 1];
        TimeZoneEntry& zone = map.timeZones[k];
        sumMs +=
            (static_cast<double>(zone.tick) - before.tick) * static_cast<double>(before.msPerTick);
        PlaceZone(map, before, zone, sumMs);
    }
}

std::int32_t DigitsOf(std::int32_t division) {
    return division >= 10'000  ? 5
           : division >= 1'000 ? 4
           : division >= 100   ? 3
           : division >= 10    ? 2
                               : 1;
}

std::string Padded(std::int64_t value, std::size_t digits) {
    std::string text = std::to_string(value);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string LengthText(const TimeMap& map) {
    const auto digits = static_cast<std::size_t>(map.divisionDigits);
    std::string text = std::to_string(map.lengthBeat) + Padded(map.lengthTick, digits);
    if (text.size() < digits + 3) {
        text.insert(0, 1, '0');
    }
    return std::to_string(map.lengthMeasure) + text;
}

void SetSongEnd(TimeMap& map) {
    map.divisionDigits = DigitsOf(map.division);
    const auto begin = map.timeZones.begin() + 1;
    const auto end = map.timeZones.begin() + map.timeZoneCount;
    const auto next = std::find_if(
        begin, end, [&](const TimeZoneEntry& zone) { return zone.tick >= map.songLength; });
    if (next != end) {
        const TimeZoneEntry& zone = *(next - 1);
        const std::int64_t distance = std::int64_t{map.songLength} - zone.tick;
        map.lengthMs = MsBehind(zone.startMs, zone.msPerTick, distance);
        const MeasureBeatTick place = PositionInZone(map, zone, distance, next->denominator);
        map.lengthMeasure = Clamped<std::int32_t>(place.measure);
        map.lengthBeat = Clamped<std::int32_t>(place.beat);
        map.lengthTick = Clamped<std::int32_t>(place.tick);
    }
    map.lengthText = LengthText(map);
    map.positionWidth = map.divisionDigits + (map.lengthMeasure >= 1'000 ? 8 : 7);
}

} // namespace

float MsPerTick(std::int32_t tempo, std::int32_t division) {
    return static_cast<float>(TempoOrDefault(tempo) / 1000.0 / std::max(division, 1));
}

std::uint16_t BpmOfTempo(std::int32_t tempo) {
    return static_cast<std::uint16_t>(
        std::min(std::lrint(60'000'000.0 / TempoOrDefault(tempo)), 65'535L));
}

void SetTimeZones(TimeMap& map) {
    StartAtZero(map.tempos, TempoEntry{.tick = 0});
    StartAtZero(map.timeSignatures, TimeSignatureEntry{.tick = 0});
    TurnHalvesIntoQuarters(map.timeSignatures);
    map.tempoCount = static_cast<std::int32_t>(map.tempos.size());
    map.timeSignatureCount = static_cast<std::int32_t>(map.timeSignatures.size());
    map.timeZones = MergeZones(map);
    CloseZones(map);
    PlaceZones(map);
    SetSongEnd(map);
}

void UpdateTimeZones(TimeMap& map) {
    if (map.timeZoneCount == 0) {
        return;
    }
    for (auto zone = map.timeZones.begin() + map.timeZoneCount - 1; zone != map.timeZones.end();
         ++zone) {
        zone->tick = map.songLength + 1;
    }
    PlaceZones(map);
    SetSongEnd(map);
}

} // namespace tracksmith::song
