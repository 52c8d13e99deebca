#include "instruments/sysex/place_resets.h"

#include <algorithm>

#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"

namespace tracksmith::instruments {
namespace {

bool PutByRule(song::Song& song, SysexSession& session, SysexBytes message) {
    for (std::size_t i = 0; i < song.tracks.size(); ++i) {
        const auto track = static_cast<std::int32_t>(i);
        const Insertion where{track, kSetUpTick, song.tracks[i].first->next};
        if (song.tracks[i].ignored == 0 && InsertMessage(song, session, where, DataOf(message))) {
            session.sysexTrack = track;
            return true;
        }
    }
    return false;
}

void PutBehindHead(song::Song& song, SysexSession& session, SysexBytes message) {
    const auto open = std::ranges::find(song.tracks, 0, &song::Track::ignored);
    if (open == song.tracks.end() || !open->first->next) {
        return;
    }
    session.sysexTrack = static_cast<std::int32_t>(open - song.tracks.begin());
    const std::int32_t tick = std::min(kSetUpTick, open->first->next->tick);
    PutMessage(song, session, {session.sysexTrack, tick, open->first}, DataOf(message));
}

} // namespace

void PlaceResets(song::Song& song, SysexSession& session) {
    for (const SysexBytes message : session.homelessResets) {
        if (!PutByRule(song, session, message)) {
            PutBehindHead(song, session, message);
        }
    }
}

} // namespace tracksmith::instruments
