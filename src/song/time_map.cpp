#include "song/time_map.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/parallel.h"

#include "song/clock.h"
#include "song/prefetch.h"
#include "song/song_position.h"

namespace tracksmith::song {
namespace {

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

std::int32_t TempoOrDefault(std::int32_t tempo) {
    return tempo <= 0 ? kDefaultTempo : tempo;
}

TempoEntry DefaultTempo() {
    return {.tick = 0};
}

TimeSignatureEntry DefaultTimeSignature() {
    return {.tick = 0};
}

// Unfilled entries behind the first copy their predecessor and stand beyond the song's end.
template <typename Entry>
void FillEntries(std::vector<Entry>& entries, const Entry& first, std::int32_t songLength) {
    entries.resize(std::max<std::size_t>(entries.size(), 1));
    if (entries.front().tick < 0) {
        entries.front() = first;
    }
    for (std::size_t i = 1; i < entries.size(); ++i) {
        if (entries[i].tick < 0) {
            entries[i] = entries[i - 1];
            entries[i].tick = songLength + 1;
        }
    }
}

void Count(SongRecord& song) {
    song.tempoCount = static_cast<std::int32_t>(song.tempos.size());
    song.timeSignatureCount = static_cast<std::int32_t>(song.timeSignatures.size());
}

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
    zone.msPerTick = MsPerTick(entry.tempo, division);
}

void SetMetre(TimeZoneEntry& zone, const TimeSignatureEntry& entry) {
    zone.denominator = std::max<std::uint8_t>(entry.denominator, 1);
    zone.numerator = std::max<std::uint8_t>(entry.numerator, 1);
}

// Merges tempos and metres into zones; both lists start at tick 0. Goes on while either list has
// an entry within the song.
std::vector<TimeZoneEntry> MergeZones(const SongRecord& song) {
    const std::vector<TempoEntry> tempos = Sorted(song.tempos);
    const std::vector<TimeSignatureEntry> metres = Sorted(song.timeSignatures);
    const std::int32_t division = EffectiveDivision(song);
    std::vector<TimeZoneEntry> zones;
    std::size_t i = 0;
    std::size_t j = 0;
    do {
        TimeZoneEntry zone = zones.empty() ? TimeZoneEntry{} : zones.back();
        const std::int64_t tempoTick = TickAt(tempos, i);
        const std::int64_t metreTick = TickAt(metres, j);
        zone.tick = static_cast<std::int32_t>(std::min(tempoTick, metreTick));
        if (tempoTick <= metreTick) {
            SetTempo(zone, tempos[i++], division);
        }
        if (metreTick <= tempoTick) {
            SetMetre(zone, metres[j++]);
        }
        zones.push_back(zone);
    } while (TickAt(tempos, i) <= song.songLength || TickAt(metres, j) <= song.songLength);
    return zones;
}

// The closing entry and one behind it, both like the last zone but beyond the song's end.
void CloseZones(SongRecord& song) {
    TimeZoneEntry closing = song.timeZones.back();
    closing.tick = song.songLength + 1;
    song.timeZones.push_back(closing);
    song.timeZoneCount = static_cast<std::int32_t>(song.timeZones.size());
    song.timeZones.push_back(closing);
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
void PlaceZone(const SongRecord& song, const TimeZoneEntry& before, TimeZoneEntry& zone,
               double sumMs) {
    const MeasureBeatTick place =
        PositionInZone(song, before, std::int64_t{zone.tick} - before.tick, zone.denominator);
    zone.measure = Clamped<std::int32_t>(place.measure);
    zone.beat = Clamped<std::uint8_t>(place.beat);
    zone.beatTick = Clamped<std::uint16_t>(place.tick);
    zone.startMs = RoundMs(sumMs);
    zone.beatTickMs =
        RoundMs(static_cast<double>(zone.beatTick) * static_cast<double>(before.msPerTick));
    zone.usPerBeat = UsPerBeat(zone);
}

void PlaceZones(SongRecord& song) {
    PlaceFirstZone(song.timeZones.front());
    double sumMs = 0;
    for (std::size_t k = 1; k < static_cast<std::size_t>(song.timeZoneCount); ++k) {
        const TimeZoneEntry& before = song.timeZones[k - 1];
        TimeZoneEntry& zone = song.timeZones[k];
        sumMs +=
            (static_cast<double>(zone.tick) - before.tick) * static_cast<double>(before.msPerTick);
        PlaceZone(song, before, zone, sumMs);
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

std::string LengthText(const SongRecord& song) {
    const auto digits = static_cast<std::size_t>(song.divisionDigits);
    std::string text = std::to_string(song.lengthBeat) + Padded(song.lengthTick, digits);
    if (text.size() < digits + 3) {
        text.insert(0, 1, '0');
    }
    return std::to_string(song.lengthMeasure) + text;
}

void SetSongEnd(SongRecord& song) {
    song.divisionDigits = DigitsOf(song.division);
    const auto begin = song.timeZones.begin() + 1;
    const auto end = song.timeZones.begin() + song.timeZoneCount;
    const auto next = std::find_if(
        begin, end, [&](const TimeZoneEntry& zone) { return zone.tick >= song.songLength; });
    if (next != end) {
        const TimeZoneEntry& zone = *(next - 1);
        const std::int64_t distance = std::int64_t{song.songLength} - zone.tick;
        song.lengthMs = MsBehind(zone.startMs, zone.msPerTick, distance);
        const MeasureBeatTick place = PositionInZone(song, zone, distance, next->denominator);
        song.lengthMeasure = Clamped<std::int32_t>(place.measure);
        song.lengthBeat = Clamped<std::int32_t>(place.beat);
        song.lengthTick = Clamped<std::int32_t>(place.tick);
    }
    song.lengthText = LengthText(song);
    song.positionWidth = song.divisionDigits + (song.lengthMeasure >= 1'000 ? 8 : 7);
}

// One forward walk over a track and the zones at once.
void SetTrackTimes(const SongRecord& song, Track& track) {
    const TimeZoneEntry* zone = song.timeZones.data();
    const TimeZoneEntry* const last = zone + song.timeZoneCount - 1;
    for (MidiEvent* event = track.first.Get(); event != nullptr; event = event->next.Get()) {
        PrefetchForWriting(event);
        // Meta events behind the song's length are followed by an End of Track at the length.
        if (event->tick < zone->tick) [[unlikely]] {
            zone = song.timeZones.data();
        }
        while (zone != last && zone[1].tick <= event->tick) {
            ++zone;
        }
        event->timeMs =
            MsBehind(zone->startMs, zone->msPerTick, std::int64_t{event->tick} - zone->tick);
    }
}

} // namespace

float MsPerTick(std::int32_t tempo, std::int32_t division) {
    return static_cast<float>(TempoOrDefault(tempo) / 1000.0 / std::max(division, 1));
}

std::uint16_t BpmOfTempo(std::int32_t tempo) {
    return static_cast<std::uint16_t>(
        std::min(std::lrint(60'000'000.0 / TempoOrDefault(tempo)), 65'535L));
}

TempoEntry TempoEntryOf(const MidiEvent& event) {
    const std::int32_t tempo =
        TempoOrDefault((event.data[0] << 16) | (event.data[1] << 8) | event.data[2]);
    return {tempo, tempo, tempo, event.tick, BpmOfTempo(tempo)};
}

TimeSignatureEntry TimeSignatureEntryOf(const MidiEvent& event) {
    const std::uint8_t exponent = event.data[1];
    const std::uint8_t numerator = event.data[0];
    return {event.data[3],
            exponent > 7 ? std::uint8_t{4} : static_cast<std::uint8_t>(1U << exponent),
            numerator == 0 ? std::uint8_t{4} : numerator, event.tick, event.data[2]};
}

void CompleteTempoTimeSign(Song& song) {
    FillEntries(song.tempos, DefaultTempo(), song.songLength);
    FillEntries(song.timeSignatures, DefaultTimeSignature(), song.songLength);
    Count(song);
}

void ReloadTempoTimeSign(Song& song) {
    song.tempos.clear();
    song.timeSignatures.clear();
    for (const Track& track : song.tracks) {
        for (ConstEventLink event = track.first; event && event->next; event = event->next) {
            if (event->kind != kLongMessage || event->status != kMeta) {
                continue;
            }
            if (event->metaType == kMetaTempo) {
                song.tempos.push_back(TempoEntryOf(*event));
            } else if (event->metaType == kMetaTimeSignature) {
                song.timeSignatures.push_back(TimeSignatureEntryOf(*event));
            }
        }
    }
    song.tempos.resize(std::max<std::size_t>(song.tempos.size(), 1) + 1);
    song.timeSignatures.resize(std::max<std::size_t>(song.timeSignatures.size(), 1) + 1);
    CompleteTempoTimeSign(song);
}

void SetTimeZones(Song& song) {
    StartAtZero(song.tempos, DefaultTempo());
    StartAtZero(song.timeSignatures, DefaultTimeSignature());
    TurnHalvesIntoQuarters(song.timeSignatures);
    Count(song);
    song.timeZones = MergeZones(song);
    CloseZones(song);
    PlaceZones(song);
    SetSongEnd(song);
}

void UpdateTimeZones(Song& song) {
    if (song.timeZoneCount == 0) {
        return;
    }
    for (auto zone = song.timeZones.begin() + song.timeZoneCount - 1; zone != song.timeZones.end();
         ++zone) {
        zone->tick = song.songLength + 1;
    }
    PlaceZones(song);
    SetSongEnd(song);
}

void SetTimePositions(Song& song) {
    if (song.timeZoneCount == 0) {
        return;
    }
    ParallelFor(song.tracks.size(), ThreadsFor(song.pool.UsedBytes()),
                [&song](std::size_t track) { SetTrackTimes(song, song.tracks[track]); });
}

void UpdateTimeZoneData(Song& song) {
    ReloadTempoTimeSign(song);
    SetTimeZones(song);
    SetTimePositions(song);
}

} // namespace tracksmith::song
