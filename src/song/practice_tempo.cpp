#include "song/practice_tempo.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

#include "song/event_chain.h"
#include "song/shared_byte.h"
#include "song/song_position.h"
#include "song/time_map.h"

namespace tracksmith::song {
namespace {

TimeZoneEntry ZoneAt(const TimeMap& map, std::int64_t tick) {
    return map.timeZones.empty() ? TimeZoneEntry{} : map.timeZones[ZoneOfTick(map, tick)];
}

// Index of the zone in force at a time; times before the song's start count as in the first.
std::size_t ZoneOfMs(const TimeMap& map, double ms) {
    const auto begin = map.timeZones.begin();
    const auto end = begin + map.timeZoneCount;
    const auto behind = std::upper_bound(
        begin, end, ms, [](double at, const TimeZoneEntry& zone) { return at < zone.startMs; });
    return behind == begin ? 0 : static_cast<std::size_t>(behind - begin) - 1;
}

constexpr std::array kShifts{16, 8, 0};

std::int32_t TempoBytes(const MidiEvent& event) {
    std::int32_t bytes = 0;
    for (std::size_t index = 0; index < kShifts.size(); ++index) {
        bytes |= event.data[index] << kShifts.at(index);
    }
    return bytes;
}

void WriteTempoBytes(MidiEvent& event, std::int32_t bytes) {
    const std::span<std::uint8_t> payload = event.data.Bytes();
    for (std::size_t index = 0; index < std::min(payload.size(), kShifts.size()); ++index) {
        WriteShared(payload[index], static_cast<std::uint8_t>(bytes >> kShifts.at(index)));
    }
}

// Entries stand in the order of their events, but the first may be a default without an event.
void CorrectFileTempo(std::vector<TempoEntry>& tempos, std::size_t& next, const TempoEntry& found,
                      std::int32_t fileTempo) {
    for (std::size_t index = next; index < std::min(next + 2, tempos.size()); ++index) {
        TempoEntry& entry = tempos[index];
        if (entry.tick == found.tick && entry.fileTempo == found.tempo) {
            entry.fileTempo = fileTempo;
            next = index + 1;
            return;
        }
    }
}

} // namespace

std::int32_t FileBpmAt(const TimeMap& map, std::int64_t tick) {
    return std::max<std::int32_t>(ZoneAt(map, tick).fileBpm, 1);
}

std::int32_t BpmAt(const TimeMap& map, std::int64_t tick) {
    return ZoneAt(map, tick).bpm;
}

std::int32_t TempoPercentAt(const TimeMap& map, std::int64_t tick) {
    const std::int64_t file = FileBpmAt(map, tick);
    return static_cast<std::int32_t>((std::int64_t{BpmAt(map, tick)} * 100 + file / 2) / file);
}

std::int64_t BpmOfPercent(const TimeMap& map, std::int64_t tick, std::int64_t percent) {
    return (FileBpmAt(map, tick) * percent + 50) / 100;
}

std::int32_t TempoOffsetForBpm(const TimeMap& map, std::int64_t tick, std::int64_t bpm) {
    const std::int64_t file = FileBpmAt(map, tick);
    const std::int64_t wanted =
        bpm == file ? file : std::clamp<std::int64_t>(bpm, kSlowestBpm, kFastestBpm);
    return static_cast<std::int32_t>(wanted - file);
}

std::int32_t MovedTempo(std::int32_t fileTempo, std::int32_t offset) {
    if (offset == 0) {
        return fileTempo;
    }
    const std::int64_t bpm = std::clamp<std::int64_t>(std::int64_t{BpmOfTempo(fileTempo)} + offset,
                                                      kSlowestBpm, kFastestBpm);
    return static_cast<std::int32_t>(std::lrint(60'000'000.0 / static_cast<double>(bpm)));
}

TimeMap MovedTimeMap(const TimeMap& base, std::int32_t offset) {
    TimeMap moved = base;
    for (TempoEntry& entry : moved.tempos) {
        entry.tempo = MovedTempo(entry.fileTempo, offset);
        entry.bpm = BpmOfTempo(entry.tempo);
    }
    SetTimeZones(moved);
    return moved;
}

std::int64_t SamePlace(const TimeMap& before, const TimeMap& after, std::int64_t us) {
    const std::size_t index = ZoneOfMs(before, static_cast<double>(us) / 1000);
    if (index >= before.timeZones.size() || index >= after.timeZones.size()) {
        return us;
    }
    const TimeZoneEntry& from = before.timeZones[index];
    const TimeZoneEntry& to = after.timeZones[index];
    const double intoZone = static_cast<double>(us) - 1000.0 * from.startMs;
    const double stretch = static_cast<double>(to.msPerTick) / static_cast<double>(from.msPerTick);
    return std::llrint(1000.0 * to.startMs + intoZone * stretch);
}

bool BeginsWithTempo(const Song& song) {
    for (const Track& track : song.tracks) {
        for (ConstEventLink event = track.first; event && event->tick == 0; event = event->next) {
            if (event->IsMeta(kMetaTempo)) {
                return true;
            }
        }
    }
    return false;
}

void InsertFirstTempo(Song& song, std::int32_t tempo) {
    Track& track = song.tracks.front();
    const EventLink event = NewMetaEvent(song.pool, 0, kMetaTempo, std::array<std::uint8_t, 3>{});
    WriteTempoBytes(*event, tempo);
    InsertAfter(track, track.first, event);
}

void RetimeSong(Song& song, const TimeMap& map) {
    static_cast<TimeMap&>(song) = map;
    SetTimePositions(song);
}

void TempoEvents::Collect(Song& song, bool keepFileTempos) {
    std::unordered_map<std::uint32_t, Entry> known;
    if (keepFileTempos) {
        for (const Entry& entry : entries_) {
            known.emplace(entry.event.Unit(), entry);
        }
    }
    entries_.clear();
    std::size_t next = 0;
    for (Track& track : song.tracks) {
        for (EventLink event = track.first; event; event = event->next) {
            if (event->IsMeta(kMetaTempo)) {
                const std::int32_t bytes = TempoBytes(*event);
                const auto before = known.find(event.Unit());
                const bool kept = before != known.end() && before->second.bytes == bytes;
                entries_.push_back({event, kept ? before->second.fileBytes : bytes, bytes});
                CorrectFileTempo(song.tempos, next, TempoEntryOf(*event),
                                 TempoOrDefault(entries_.back().fileBytes));
            }
        }
    }
}

void TempoEvents::Rewrite(std::int32_t offset) {
    for (Entry& entry : entries_) {
        WriteTempoBytes(*entry.event, offset == 0
                                          ? entry.fileBytes
                                          : MovedTempo(TempoOrDefault(entry.fileBytes), offset));
        entry.bytes = TempoBytes(*entry.event); // a payload may have no room for all three
    }
}

} // namespace tracksmith::song
