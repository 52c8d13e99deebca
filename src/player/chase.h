#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "song/channel_state.h"
#include "song/song.h"
#include "song/track_walk.h"

namespace tracksmith::player {

/// What the events before a place have set: the memory of a seek.
struct ChaseMemory {
    std::array<song::ChannelState, song::kMidiChannels> channels;
    /// System-exclusive messages that come before the song's first note.
    std::vector<song::ConstEventLink> setUp;
};

/// The first event of the track that is not due before `ms`; null when all are.
song::EventLink FirstDue(song::Track& track, std::int64_t ms);

/// Puts the play cursor of every track on its first event that is not due before `ms`.
void SeekCursors(song::Song& song, std::int64_t ms);

/// What the events before the cursors `end` of the tracks have set, in the order of playing; muted
/// tracks are left out. Throws std::bad_alloc.
ChaseMemory CollectChase(const song::Song& song,
                         song::EventLinkField song::Track::*end = &song::Track::cursor);

} // namespace tracksmith::player
