#pragma once

#include "song/place_map.h"
#include "song/song.h"

namespace tracksmith::session {

/// Another state of the song in memory that can be heard in its place: the file, a backup.
struct OtherSong {
    /// Timed, with note pairs. The player moves its cursors and, by the practice tempo, its times.
    song::Song song;
    /// From its places (earlier) to those of the song in memory (later).
    song::PlaceMap places;
    /// Goes out when the song is taken up while it plays and sets no reset itself; null for none.
    song::EventLink reset;
};

} // namespace tracksmith::session
