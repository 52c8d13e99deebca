#include "instruments/sysex/insert_message.h"

#include <algorithm>

#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_track.h"

namespace tracksmith::instruments {

song::EventLink FindSetUp(song::Song& song, SysexSession& session, std::int32_t tick,
                          SysexBytes message, std::size_t compared) {
    const std::int32_t last = SearchEnd(song, tick);
    RaiseEnds(song, last);
    const SysexBytes wanted = DataOf(message.first(compared));
    song::EventLink found;
    VisitUntil(song, session, last, [&](const song::SysexPlace& place) {
        const SysexBytes data = Live(place);
        if (compared == message.size() ? !std::ranges::equal(data, wanted)
                                       : !StartsWith(data, wanted)) {
            return false;
        }
        session.sysexTrack = place.track;
        found = place.event;
        return true;
    });
    return found;
}

song::EventLink InsertSetUp(song::Song& song, SysexSession& session, std::int32_t tick,
                            SysexBytes message, std::size_t compared) {
    if (FindSetUp(song, session, tick, message, compared)) {
        return {};
    }
    session.sysexTrack = ChooseSysexTrack(song, session);
    if (session.sysexTrack < 0) {
        return {};
    }
    song::Track& track = song.tracks[static_cast<std::size_t>(session.sysexTrack)];
    return InsertMessage(song, session, {session.sysexTrack, tick, track.first}, DataOf(message));
}

song::EventLink InsertSetUp(song::Song& song, SysexSession& session, std::int32_t tick,
                            SysexBytes message) {
    return InsertSetUp(song, session, tick, message, message.size());
}

} // namespace tracksmith::instruments
