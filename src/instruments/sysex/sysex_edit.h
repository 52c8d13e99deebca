#pragma once

#include <cstdint>
#include <new>

#include "instruments/sysex/sysex_session.h"
#include "instruments/sysex/sysex_templates.h"
#include "instruments/sysex/sysex_track.h"
#include "song/song.h"
#include "song/texts.h"

/// The only functions that change a song for the system-exclusive operations; they keep the index
/// and the list of changes in step.
namespace tracksmith::instruments {

/// Runs `work`; memory that ends is shown through the host and raised as EMidiError.
template <typename Work>
void WithMemory(const SysexSession& session, Work work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        RaiseMidiError(session.host, song::texts::kOutOfMemory);
    }
}

/// The index of the song, collected now if the session has none. Raises EMidiError.
const SysexIndex& IndexOf(song::Song& song, SysexSession& session);

/// Last tick that an insertion looks at: 8 quarter notes, or its own tick `own` where that lies
/// behind them, so that it always finds again what it put there.
std::int32_t SearchEnd(const song::Song& song, std::int32_t own);

/// Moves the End of Track of each track that a search up to `tick` reaches the end of to the song's
/// length, if it stands before.
void RaiseEnds(song::Song& song, std::int32_t tick);

/// A message that counts: its payload, empty for a removed one.
inline SysexBytes Live(const song::SysexPlace& place) {
    return place.event->Payload();
}

/// Calls `visit(place)` for each message that counts, up to and including `lastTick`, of tracks
/// that are not ignored, in track and chain order, until it returns true. Returns whether it did.
template <typename Visit>
bool VisitUntil(song::Song& song, SysexSession& session, std::int32_t lastTick, Visit visit) {
    for (const song::SysexPlace& place : IndexOf(song, session).Places()) {
        if (place.event->tick <= lastTick && !Live(place).empty() &&
            !IsIgnored(song, place.track) && visit(place)) {
            return true;
        }
    }
    return false;
}

/// Calls `visit(place)` for each message that counts, up to and including `lastTick`.
template <typename Visit>
void VisitEach(song::Song& song, SysexSession& session, std::int32_t lastTick, Visit visit) {
    VisitUntil(song, session, lastTick, [&visit](const song::SysexPlace& place) {
        visit(place);
        return false;
    });
}

/// The event behind which one at `tick` goes: the last at or before it, looked for from `start` on;
/// null when all lie behind `tick` or when End of Track lies at or before it.
song::EventLink PlaceFor(song::EventLink start, std::int32_t tick);

/// Where an event goes.
struct Insertion {
    std::int32_t track = 0;
    std::int32_t tick = 0;
    /// An event of the track at or before the tick to look for the place from.
    song::EventLink start;
};

/// Puts a message (without F0) into the song. A removed one of the same bytes at the same place
/// comes back to life instead. Returns the event, null where the track ends before the tick. Raises
/// EMidiError when memory ends.
song::EventLink InsertMessage(song::Song& song, SysexSession& session, const Insertion& where,
                              SysexBytes data);

/// Puts a message (without F0) at the tick directly behind `start`, an event of the track. Raises
/// EMidiError when memory ends.
void PutMessage(song::Song& song, SysexSession& session, const Insertion& where, SysexBytes data);

/// Puts an event of length 0 with these bytes into the song, or finds the one that is there.
song::EventLink InsertPlaceholder(song::Song& song, SysexSession& session, const Insertion& where,
                                  SysexBytes data);

/// Gives the message length 0; its bytes stay with the event.
void RemoveMessage(SysexSession& session, const song::SysexPlace& place);

/// Remembers a found message under `kind`.
void KeepFound(SysexSession& session, SysexFind kind, const song::SysexPlace& place);

/// Makes the notes of the report from the changes.
void WriteReport(SysexSession& session);

} // namespace tracksmith::instruments
