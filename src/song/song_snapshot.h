#pragma once

#include <cstddef>

#include "song/song.h"

namespace tracksmith::song {

/// A copy of a whole song that can be put back in place. Keeps its buffer between uses. Only for
/// the one song it was taken from, and only until that song is cleared or loaded anew.
class SongSnapshot {
public:
    /// Copies the song. Throws std::bad_alloc and then holds nothing.
    void Take(const Song& song);

    /// Puts the copy back; the snapshot stays valid. Does nothing when it holds none. Throws
    /// std::bad_alloc before the song is touched.
    void Restore(Song& song) const;

    /// Forgets the copy but keeps the buffer.
    void Drop() { valid_ = false; }

    bool Valid() const { return valid_; }

    /// Bytes of events and payloads in the copy.
    std::size_t Bytes() const { return events_.Bytes(); }

private:
    SongRecord record_;
    EventPool::Snapshot events_;
    bool valid_ = false;
};

} // namespace tracksmith::song
