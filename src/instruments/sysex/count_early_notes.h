#pragma once

#include <cstdint>

#include "instruments/sysex/play_walk.h"
#include "instruments/sysex/sysex_session.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Counts the notes that begin before the instrument has taken in the messages that were put in,
/// pauses included, into the channels of the report. Changes nothing in the song. For whoever walks
/// over the song anyway. Throws std::bad_alloc. One thread.
class EarlyNotes {
public:
    /// The operations have put in their messages.
    EarlyNotes(song::Song& song, SysexSession& session);

    /// Takes a note-on that the walk meets.
    void Meet(const song::MidiEvent& event) {
        if (event.tick < end_) {
            Count(event);
        }
    }
    /// Takes what a walk that met all of them has not reached yet.
    void MeetRest(const PlayWalk& walk);

private:
    void Count(const song::MidiEvent& event);

    song::Song& song_;
    SysexSession& session_;
    std::int32_t end_ = 0;
};

/// The same with a walk of its own.
void CountEarlyNotes(song::Song& song, SysexSession& session);

} // namespace tracksmith::instruments
