#include "song/song_snapshot.h"

#include <utility>

namespace tracksmith::song {

void SongSnapshot::Take(const Song& song) {
    valid_ = false;
    record_ = static_cast<const SongRecord&>(song);
    song.pool.CopyTo(events_);
    valid_ = true;
}

void SongSnapshot::Restore(Song& song) const {
    if (!valid_) {
        return;
    }
    SongRecord record = record_;
    song.pool.RestoreFrom(events_);
    static_cast<SongRecord&>(song) = std::move(record);
}

} // namespace tracksmith::song
