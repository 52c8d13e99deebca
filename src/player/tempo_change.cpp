#include "player/tempo_change.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "song/shared_byte.h"
#include "song/song_position.h"
#include "song/time_map.h"

namespace tracksmith::player {
namespace {

// The zone in force at a position; positions before the song's start count as in the first.
std::size_t ZoneAt(const TimeMap& map, double ms) {
    const auto begin = map.timeZones.begin();
    const auto end = begin + map.timeZoneCount;
    const auto behind = std::upper_bound(
        begin, end, ms,
        [](double at, const song::TimeZoneEntry& zone) { return at < zone.startMs; });
    return behind == begin ? 0 : static_cast<std::size_t>(behind - begin) - 1;
}

void WriteTempo(song::MidiEvent& event, std::int32_t tempo) {
    constexpr std::array kShifts{16, 8, 0};
    std::size_t index = 0;
    for (std::uint8_t& byte :
         event.data.Bytes().first(std::min<std::size_t>(event.data.Size(), 3))) {
        song::WriteShared(byte, static_cast<std::uint8_t>(tempo >> kShifts[index++]));
    }
}

// Entries stand in the order of their events, but the first may be a default without an event.
void CorrectFileTempo(std::vector<song::TempoEntry>& tempos, std::size_t& next, std::int32_t tick,
                      std::int32_t tempo, std::int32_t fileTempo) {
    for (std::size_t index = next; index < std::min(next + 2, tempos.size()); ++index) {
        song::TempoEntry& entry = tempos[index];
        if (entry.tick == tick && entry.fileTempo == tempo) {
            entry.fileTempo = fileTempo;
            next = index + 1;
            return;
        }
    }
}

} // namespace

std::int32_t MovedTempo(std::int32_t fileTempo, std::int32_t offset) {
    if (offset == 0) {
        return fileTempo;
    }
    const std::int64_t bpm = std::clamp<std::int64_t>(
        std::int64_t{song::BpmOfTempo(fileTempo)} + offset, kSlowestBpm, kFastestBpm);
    return static_cast<std::int32_t>(std::lrint(60'000'000.0 / static_cast<double>(bpm)));
}

std::shared_ptr<const TimeMap> TimeMapOf(const song::Song& song) {
    auto map = std::make_shared<TimeMap>();
    map->format = song.format;
    map->division = song.division;
    map->songLength = song.songLength;
    map->tempos = song.tempos;
    map->tempoCount = song.tempoCount;
    map->timeSignatures = song.timeSignatures;
    map->timeSignatureCount = song.timeSignatureCount;
    map->timeZones = song.timeZones;
    map->timeZoneCount = song.timeZoneCount;
    map->lengthMs = song.lengthMs;
    map->lengthMeasure = song.lengthMeasure;
    map->lengthBeat = song.lengthBeat;
    map->lengthTick = song.lengthTick;
    map->lengthText = song.lengthText;
    map->divisionDigits = song.divisionDigits;
    map->positionWidth = song.positionWidth;
    return map;
}

std::shared_ptr<const TimeMap> MovedTimeMap(const TimeMap& base, std::int32_t offset) {
    song::Song scratch;
    static_cast<TimeMap&>(scratch) = base;
    for (song::TempoEntry& entry : scratch.tempos) {
        entry.tempo = MovedTempo(entry.fileTempo, offset);
        entry.bpm = song::BpmOfTempo(entry.tempo);
    }
    song::SetTimeZones(scratch);
    return std::make_shared<TimeMap>(std::move(static_cast<TimeMap&>(scratch)));
}

std::int64_t SamePlace(const TimeMap& before, const TimeMap& after, std::int64_t us) {
    const std::size_t index = ZoneAt(before, static_cast<double>(us) / 1000);
    if (index >= before.timeZones.size() || index >= after.timeZones.size()) {
        return us;
    }
    const song::TimeZoneEntry& from = before.timeZones[index];
    const song::TimeZoneEntry& to = after.timeZones[index];
    const double intoZone = static_cast<double>(us) - 1000.0 * from.startMs;
    const double stretch = static_cast<double>(to.msPerTick) / static_cast<double>(from.msPerTick);
    return std::llrint(1000.0 * to.startMs + intoZone * stretch);
}

std::int64_t LargestTime(const song::Song& song) {
    std::int64_t largest = 0;
    for (const song::Track& track : song.tracks) {
        // Only meta events may stand behind the End of Track's tick, directly before it.
        for (song::ConstEventLink event = track.last; event; event = event->prev) {
            largest = std::max<std::int64_t>(largest, event->timeMs);
            if (event->status != song::kMeta) {
                break;
            }
        }
    }
    return largest;
}

void TempoEvents::Collect(song::Song& song, bool keepFileTempos) {
    std::unordered_map<std::uint32_t, Entry> known;
    if (keepFileTempos) {
        for (const Entry& entry : entries_) {
            known.emplace(entry.event.Unit(), entry);
        }
    }
    entries_.clear();
    std::size_t next = 0;
    for (song::Track& track : song.tracks) {
        for (song::EventLink event = track.first; event; event = event->next) {
            if (event->IsMeta(song::kMetaTempo)) {
                const std::int32_t tempo = song::TempoEntryOf(*event).tempo;
                const auto before = known.find(event.Unit());
                const bool kept = before != known.end() && before->second.tempo == tempo;
                entries_.push_back({event, kept ? before->second.fileTempo : tempo, tempo});
                CorrectFileTempo(song.tempos, next, event->tick, tempo, entries_.back().fileTempo);
            }
        }
    }
}

void TempoEvents::Rewrite(std::int32_t offset) {
    for (Entry& entry : entries_) {
        entry.tempo = MovedTempo(entry.fileTempo, offset);
        WriteTempo(*entry.event, entry.tempo);
    }
}

void RetimeSong(song::Song& song, const TimeMap& map) {
    song.tempos = map.tempos;
    song.timeZones = map.timeZones;
    song.lengthMs = map.lengthMs;
    song.lengthMeasure = map.lengthMeasure;
    song.lengthBeat = map.lengthBeat;
    song.lengthTick = map.lengthTick;
    song.lengthText = map.lengthText;
    song.positionWidth = map.positionWidth;
    song::SetTimePositions(song);
}

} // namespace tracksmith::player
