#include "instruments/sysex/count_early_notes.h"

#include <algorithm>
#include <cstddef>

#include "instruments/sysex/insertion_clock.h"
#include "instruments/sysex/set_up_marks.h"
#include "instruments/sysex/sysex_edit.h"

namespace tracksmith::instruments {

EarlyNotes::EarlyNotes(song::Song& song, SysexSession& session) : song_(song), session_(session) {
    if (std::ranges::count(session.changes, SysexNote::What::Inserted, &SysexChange::what) > 0) {
        const InsertionClock clock(song);
        end_ = clock.FirstTickAt(SetUpMarks(song, session).ReadyMs(clock));
    }
}

void EarlyNotes::Count(const song::MidiEvent& event) {
    if (event.length > 0 && event.data2 != 0) {
        ++session_.report.channels.at(event.Channel()).earlyNotes;
    }
}

void EarlyNotes::MeetRest(const PlayWalk& walk) {
    for (std::size_t index = 0; index < song_.tracks.size(); ++index) {
        if (song_.tracks[index].ignored != 0) {
            continue;
        }
        for (song::ConstEventLink event = walk.Behind(static_cast<std::int32_t>(index));
             event && event->tick < end_; event = event->next) {
            if (event->IsNoteOn()) {
                Count(*event);
            }
        }
    }
}

void CountEarlyNotes(song::Song& song, SysexSession& session) {
    WithMemory(session, [&] { EarlyNotes(song, session).MeetRest(PlayWalk(song)); });
}

} // namespace tracksmith::instruments
