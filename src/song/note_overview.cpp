#include "song/note_overview.h"

#include <algorithm>

#include "song/song_position.h"

namespace tracksmith::song {
namespace {

// Starts of the columns by walking the zones measure by measure, several measures to a step.
std::vector<std::int32_t> ColumnTicks(const Song& song, std::int64_t measuresPerColumn) {
    std::vector<std::int32_t> ticks;
    std::int64_t tick = 0;
    while (tick < song.songLength && ticks.size() < NoteOverview::kMostColumns) {
        ticks.push_back(static_cast<std::int32_t>(tick));
        const TimeZoneEntry& zone = song.timeZones[ZoneOfTick(song, tick)];
        const std::int64_t zoneMeasure = std::int64_t{zone.numerator} * TicksPerBeat(song, zone);
        std::int64_t next = tick + zoneMeasure * measuresPerColumn;
        if (measuresPerColumn == 1) {
            // A change of time signature inside a measure begins a new one.
            const std::size_t behind = ZoneOfTick(song, next - 1);
            const TimeZoneEntry& last = song.timeZones[behind];
            const bool newTimeSignature =
                last.numerator != zone.numerator || last.denominator != zone.denominator;
            next = newTimeSignature && last.tick > tick ? last.tick : next;
        }
        tick = next;
    }
    ticks.push_back(std::max(song.songLength, ticks.empty() ? 0 : ticks.back() + 1));
    return ticks;
}

void CountTrack(const Track& track, NoteOverview& overview) {
    std::size_t column = 0;
    const std::size_t last = overview.Columns() - 1;
    for (ConstEventLink event = track.first; event; event = event->next) {
        if (!event->IsNoteOn()) {
            continue;
        }
        while (column < last && overview.columnTick[column + 1] <= event->tick) {
            ++column;
        }
        ++overview.notes[event->Channel()][column];
        ++overview.total[event->Channel()];
    }
}

} // namespace

NoteOverview MakeNoteOverview(const Song& song) {
    constexpr std::int64_t kMost = NoteOverview::kMostColumns;
    NoteOverview overview;
    overview.measures = std::max<std::int64_t>(song.lengthMeasure, 1);
    overview.measuresPerColumn = (overview.measures + kMost - 1) / kMost;
    overview.columnTick = ColumnTicks(song, overview.measuresPerColumn);
    const std::size_t columns = std::max<std::size_t>(overview.columnTick.size() - 1, 1);
    overview.columnTick.resize(columns + 1, song.songLength);
    for (std::vector<std::uint32_t>& row : overview.notes) {
        row.resize(columns);
    }
    for (const Track& track : song.tracks) {
        if (track.ignored == 0) {
            CountTrack(track, overview);
        }
    }
    return overview;
}

} // namespace tracksmith::song
