#include "song/song.h"

#include <utility>

namespace tracksmith::song {

void ClearSong(Song& song) {
    SongRecord empty;
    empty.runningStatusAcrossSysex = song.runningStatusAcrossSysex;
    static_cast<SongRecord&>(song) = std::move(empty);
    song.pool.Clear();
}

} // namespace tracksmith::song
