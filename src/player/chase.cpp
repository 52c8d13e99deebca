#include "player/chase.h"

#include <limits>

namespace tracksmith::player {
namespace {

std::int64_t FirstNoteTick(const song::Song& song) {
    std::int64_t first = std::numeric_limits<std::int64_t>::max();
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && event->tick < first;
             event = event->next) {
            if (event->IsNoteOn() && event->length > 0) {
                first = event->tick;
            }
        }
    }
    return first;
}

/// What is heard before the cursors and sets something.
struct SettingsBefore {
    song::EventLinkField song::Track::*end;

    static bool Enters(const song::Track& track) { return track.ignored == 0 && track.muted == 0; }
    static bool Wants(const song::MidiEvent& event) {
        return event.length > 0 &&
               (event.IsChannelMessage() ? event.status >= song::kControlChange
                                         : event.status == song::kSystemExclusive);
    }
    song::ConstEventLink EndOf(const song::Track& track) const { return track.*end; }
};

} // namespace

song::EventLink FirstDue(song::Track& track, std::int64_t ms) {
    song::EventLink event = track.first;
    while (event && song::DueMs(track, *event) < ms) {
        event = event->next;
    }
    return event;
}

void SeekCursors(song::Song& song, std::int64_t ms) {
    for (song::Track& track : song.tracks) {
        track.cursor = FirstDue(track, ms);
    }
}

ChaseMemory CollectChase(const song::Song& song, song::EventLinkField song::Track::*end) {
    ChaseMemory memory;
    const std::int64_t firstNote = FirstNoteTick(song);
    song::TrackWalk<song::DueOrder, SettingsBefore> walk(song, {end});
    while (const song::MidiEvent* event = walk.Take()) {
        if (event->IsChannelMessage()) {
            memory.channels[event->Channel()].Take(song::LinkTo(*event));
        } else if (event->tick <= firstNote) {
            memory.setUp.push_back(song::LinkTo(*event));
        }
    }
    return memory;
}

} // namespace tracksmith::player
