#include "song/time_map.h"

#include <algorithm>

#include "base/parallel.h"

#include "song/clock.h"
#include "song/prefetch.h"
#include "song/song_position.h"

namespace tracksmith::song {
namespace {

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

// One forward walk over a track and the zones at once. A track that begins behind many zones does
// not pass them one by one.
void SetTrackTimes(const TimeMap& map, Track& track) {
    const TimeZoneEntry* zone = map.timeZones.data();
    const TimeZoneEntry* const last = zone + map.timeZoneCount - 1;
    for (MidiEvent* event = track.first.Get(); event != nullptr; event = event->next.Get()) {
        PrefetchForWriting(event);
        // Meta events behind the song's length are followed by an End of Track at the length.
        if (event->tick < zone->tick) [[unlikely]] {
            zone = map.timeZones.data();
        }
        if (zone != last && zone[1].tick <= event->tick) [[unlikely]] {
            ++zone;
            if (zone != last && zone[1].tick <= event->tick) {
                zone = map.timeZones.data() + ZoneOfTick(map, event->tick);
            }
        }
        event->timeMs =
            MsBehind(zone->startMs, zone->msPerTick, std::int64_t{event->tick} - zone->tick);
    }
}

} // namespace

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
    FillEntries(song.tempos, TempoEntry{.tick = 0}, song.songLength);
    FillEntries(song.timeSignatures, TimeSignatureEntry{.tick = 0}, song.songLength);
    song.tempoCount = static_cast<std::int32_t>(song.tempos.size());
    song.timeSignatureCount = static_cast<std::int32_t>(song.timeSignatures.size());
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

void SetTimePositions(Song& song) {
    if (song.timeZoneCount == 0) {
        return;
    }
    ParallelFor(song.tracks.size(), ThreadsFor(song.pool.UsedBytes()),
                [&song](std::size_t track) { SetTrackTimes(song, song.tracks[track]); });
}

std::int64_t LargestTime(const Song& song) {
    std::int64_t largest = 0;
    for (const Track& track : song.tracks) {
        // Only meta events may stand behind the End of Track's tick, directly before it.
        for (ConstEventLink event = track.last; event; event = event->prev) {
            largest = std::max<std::int64_t>(largest, event->timeMs);
            if (event->status != kMeta) {
                break;
            }
        }
    }
    return largest;
}

void UpdateTimeZoneData(Song& song) {
    ReloadTempoTimeSign(song);
    SetTimeZones(song);
    SetTimePositions(song);
}

} // namespace tracksmith::song
