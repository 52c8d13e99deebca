#include "editing/range_figures.h"

#include <algorithm>

#include "song/mode_message.h"
#include "song/song_position.h"

namespace tracksmith::editing {
namespace {

std::int64_t MeasuresOf(const song::TimeMap& map, const TickRange& range) {
    const auto first = song::GetMeasureBeatFromSongPos(map, range.start);
    const auto last = song::GetMeasureBeatFromSongPos(map, range.end);
    const auto beginsAt = [](const song::MeasureBeatTick& place) {
        return place.beat == 1 && place.tick == 0;
    };
    // Whole measures are counted from any beat to the same one.
    const bool sameBeat = first.beat == last.beat && first.tick == last.tick;
    const std::int64_t more = sameBeat || beginsAt(last) ? 0 : 1;
    return std::max<std::int64_t>(last.measure - first.measure + more, 1);
}

void CountEvent(const song::MidiEvent& event, RangeFigures& figures) {
    if (event.length <= 0) {
        return;
    }
    if (event.IsNoteOn()) {
        ++figures.notes;
    } else if (event.status == song::kSystemExclusive || event.status == song::kEscape) {
        const bool drums = song::RhythmPartOf(song::WithoutFrame(event.Payload())).has_value();
        ++(drums ? figures.drumMessages : figures.instrumentMessages);
    }
}

} // namespace

RangeFigures CountRange(const song::Song& song, const TickRange& range) {
    RangeFigures figures;
    figures.measures = MeasuresOf(song, range);
    figures.lengthMs = song::TickToMs(song, range.end) - song::TickToMs(song, range.start);
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && event->tick < range.end;
             event = event->next) {
            if (event->tick >= range.start) {
                CountEvent(*event, figures);
            }
        }
    }
    return figures;
}

} // namespace tracksmith::editing
