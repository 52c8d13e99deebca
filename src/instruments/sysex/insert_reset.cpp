#include "instruments/sysex/insert_reset.h"

#include "instruments/sysex/insert_message.h"
#include "instruments/sysex/sysex_edit.h"
#include "instruments/sysex/sysex_templates.h"
#include "instruments/sysex/sysex_track.h"

namespace tracksmith::instruments {
namespace {

void InsertReset(song::Song& song, SysexSession& session, SysexBytes message) {
    if (FindSetUp(song, session, kSetUpTick, message, message.size())) {
        return;
    }
    session.sysexTrack = ChooseSysexTrack(song, session);
    if (session.sysexTrack < 0) {
        return;
    }
    song::Track& track = song.tracks[static_cast<std::size_t>(session.sysexTrack)];
    const Insertion where{session.sysexTrack, kSetUpTick, track.first->next};
    if (!InsertMessage(song, session, where, DataOf(message))) {
        WithMemory(session, [&] { session.homelessResets.push_back(message); });
    }
}

} // namespace

void InsertGMSysex(song::Song& song, SysexSession& session) {
    InsertReset(song, session, templates::kGmSystemOn);
}

void InsertGM2Sysex(song::Song& song, SysexSession& session) {
    InsertReset(song, session, templates::kGm2SystemOn);
}

void InsertXGSysex(song::Song& song, SysexSession& session) {
    InsertReset(song, session, templates::kXgSystemOn);
}

void InsertKN6000Sysex(song::Song& song, SysexSession& session) {
    InsertReset(song, session, templates::kKn6000);
}

} // namespace tracksmith::instruments
