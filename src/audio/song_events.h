#pragma once

#include <cstddef>
#include <vector>

#include <queue>

#include "song/song.h"

namespace tracksmith::audio {

/// Walks through the sendable events of all tracks that are not ignored, merged by tick; equal
/// ticks come in track order. The song must stay unchanged meanwhile.
class SongEvents {
public:
    explicit SongEvents(const song::Song& song);

    /// The event that comes next, null behind the last.
    const song::MidiEvent* Peek() const;

    /// Goes on to the following event.
    void Advance();

private:
    struct Cursor {
        song::ConstEventLink event;
        std::size_t track = 0;
    };
    /// Orders the queue so that the earliest event is on top.
    struct Later {
        bool operator()(const Cursor& left, const Cursor& right) const;
    };

    void Push(song::ConstEventLink event, std::size_t track);

    std::priority_queue<Cursor, std::vector<Cursor>, Later> queue_;
};

} // namespace tracksmith::audio
