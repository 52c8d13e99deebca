#pragma once

#include <cstddef>
#include <cstdint>

#include "song/song.h"

namespace tracksmith::instruments {

/// Time that an instrument needs after a set-up message before it takes a voice, in milliseconds.
inline constexpr std::int64_t kSetUpPauseMs = 50;

/// Where the first voice of a channel can be put in.
struct VoicePlace {
    /// The event to put it behind; null where the song has nothing of the channel.
    song::EventLink behind;
    /// Index of the track.
    std::size_t track = 0;
    std::int32_t tick = 0;
    std::int32_t timeMs = 0;
};

/// The place for the first voice of `channel` (0-15), which the song does not select yet: on the
/// track of its first note in playing order, kSetUpPauseMs behind the last system-exclusive message
/// that stands before that note where there is room, else directly before the note. Without notes
/// the track of the channel's first event is taken, behind the messages of the first eight quarter
/// notes. Tracks that are ignored do not count. The song must have a time map and its events their
/// times.
VoicePlace PlaceForVoice(song::Song& song, std::size_t channel);

} // namespace tracksmith::instruments
