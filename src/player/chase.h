#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "song/channel_state.h"
#include "song/song.h"
#include "song/track_walk.h"

namespace tracksmith::player {

/// A set-up message of the song, and how long nothing may follow it (milliseconds).
struct SetUpMessage {
    song::ConstEventLink event;
    std::int64_t pauseMs = 0;
};

/// What the events before a place have set: the memory of a seek.
struct ChaseMemory {
    /// The last events that set something, as the mixer changes them.
    std::array<song::ChannelControls, song::kMidiChannels> controls;
    /// What a device that has heard them is in: a reset forgets what it had before.
    std::array<song::ChannelState, song::kMidiChannels> channels;
    /// System-exclusive messages that come before the song's first note; resets and messages that
    /// make drum parts wherever they stand.
    std::vector<SetUpMessage> setUp;
};

/// Which system-exclusive messages act where.
struct ChaseRules {
    /// They are sent at all.
    bool sysex = true;
    /// The channels on the port that receives them, a bit for each.
    unsigned channels = 0xFFFF;
};

/// The first event of the track that is not due before `ms`; null when all are.
song::EventLink FirstDue(song::Track& track, std::int64_t ms);

/// Puts the play cursor of every track on its first event that is not due before `ms`.
void SeekCursors(song::Song& song, std::int64_t ms);

/// What the events before the cursors `end` of the tracks have set, in the order of playing; muted
/// tracks are left out. Throws std::bad_alloc.
ChaseMemory CollectChase(const song::Song& song, const ChaseRules& rules,
                         song::EventLinkField song::Track::*end = &song::Track::cursor);

} // namespace tracksmith::player
