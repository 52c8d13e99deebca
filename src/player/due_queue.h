#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tracksmith::player {

/// The tracks of a song in the order in which their next events are due; at the same time the lower
/// track comes first. Allocates only in Reserve.
class DueQueue {
public:
    struct Entry {
        std::int64_t dueMs;
        std::uint32_t track;
    };

    /// Makes room for so many tracks.
    void Reserve(std::size_t tracks) { entries_.reserve(tracks); }
    void Clear() { entries_.clear(); }
    /// Adds a track that is not in the queue.
    void Add(Entry entry);
    /// Gives the first track a new due time.
    void ReplaceFirst(std::int64_t dueMs);
    void RemoveFirst();

    bool Empty() const { return entries_.empty(); }
    const Entry& First() const { return entries_.front(); }

private:
    void Sink();

    std::vector<Entry> entries_; // a binary heap
};

} // namespace tracksmith::player
