#include "instruments/sysex/count_early_notes.h"

#include <algorithm>

#include "instruments/sysex/insertion_clock.h"
#include "instruments/sysex/set_up_marks.h"
#include "instruments/sysex/sysex_edit.h"

namespace tracksmith::instruments {
namespace {

bool Begins(const song::MidiEvent& event) {
    return event.length > 0 && event.IsNoteOn() && event.data2 != 0;
}

void Count(const song::Track& track, std::int32_t end, PreparationReport& report) {
    for (song::ConstEventLink event = track.first; event && event->tick < end;
         event = event->next) {
        if (Begins(*event)) {
            ++report.channels.at(event->Channel()).earlyNotes;
        }
    }
}

} // namespace

void CountEarlyNotes(song::Song& song, SysexSession& session) {
    const bool waits =
        std::ranges::count(session.changes, SysexNote::What::Inserted, &SysexChange::what) > 0;
    if (!waits) {
        return;
    }
    WithMemory(session, [&] {
        const InsertionClock clock(song);
        const std::int32_t ready = SetUpMarks(song, session).ReadyMs(clock);
        for (const song::Track& track : song.tracks) {
            if (track.ignored == 0) {
                Count(track, clock.FirstTickAt(ready), session.report);
            }
        }
    });
}

} // namespace tracksmith::instruments
