#pragma once

#include <cstddef>
#include <vector>

#include "song/track_walk.h"

namespace tracksmith::player {

/// The tracks of a song in the order in which their next events are played. Allocates only in
/// Reserve.
class DueQueue {
public:
    using Entry = song::DueOrder::Key;

    /// Makes room for so many tracks.
    void Reserve(std::size_t tracks) { entries_.reserve(tracks); }
    void Clear() { entries_.clear(); }
    /// Adds a track that is not in the queue.
    void Add(Entry entry);
    /// Puts the first track's next event in place of its last.
    void ReplaceFirst(Entry entry);
    void RemoveFirst();

    bool Empty() const { return entries_.empty(); }
    const Entry& First() const { return entries_.front(); }

private:
    void Sink();

    std::vector<Entry> entries_; // a binary heap
};

} // namespace tracksmith::player
