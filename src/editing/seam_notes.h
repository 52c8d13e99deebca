#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "song/song.h"

namespace tracksmith::editing {

/// Ends and begins notes where an edit cuts through them, and remembers which these are.
class SeamNotes {
public:
    /// `song` must outlive the object.
    explicit SeamNotes(song::Song& song) : song_(song) {}

    /// Ends the notes `open` of a track (note-ons by channel and pitch, the older first) just
    /// before `tick`: at tick - 1, the older of two of a pitch at tick - 2, none before it begins.
    /// `place` is the first event that belongs to `tick`. Throws std::bad_alloc.
    void Close(song::Track& track, song::EventLink place, std::int32_t tick,
               std::span<const song::EventLink> open);
    /// New events, in no chain yet, that begin the notes again at `tick`. Throws std::bad_alloc.
    std::vector<song::EventLink> BeginAgain(std::span<const song::EventLink> open,
                                            std::int32_t tick);

    /// Pairs the notes of the song anew and cuts those that overlap and touch a seam. Throws
    /// std::bad_alloc.
    void RemoveOverlaps();

    std::int64_t Closed() const { return closed_; }
    std::int64_t BegunAgain() const { return static_cast<std::int64_t>(events_.size()) - closed_; }

private:
    song::EventLink NewNote(const song::MidiEvent& note, std::uint8_t command, std::int32_t tick);

    song::Song& song_;
    std::vector<std::uint32_t> events_; // all that were made
    std::int64_t closed_ = 0;
};

/// Links `event` directly before `place`, which is not the head.
void InsertBefore(song::Track& track, song::EventLink place, song::EventLink event);

} // namespace tracksmith::editing
