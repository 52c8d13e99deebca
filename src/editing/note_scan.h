#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "song/note_pairing.h"
#include "song/song.h"

namespace tracksmith::editing {

/// What is wrong with a note that a scan meets.
enum class NoteFault : std::uint8_t { DoubleNoteOn, DoubleNoteOff };
/// Told about each. May throw.
using NoteFaultListener = std::function<void(NoteFault, const song::MidiEvent& event)>;

/// The notes of one track that sound, by channel and pitch; a note-off ends the oldest.
class OpenNotes {
public:
    OpenNotes() : lines_(song::NotePairing::kKeys) {}

    /// Takes the next event: for a note-off that ends a note, the note-on; null otherwise. Throws
    /// std::bad_alloc.
    song::EventLink Take(song::EventLink event);
    /// Whether a note of the event's channel and pitch sounds.
    bool Sounds(const song::MidiEvent& event) const;
    /// The note-ons of all notes that sound, by channel and pitch, the older first.
    std::vector<song::EventLink> All() const;
    void Clear();

private:
    struct Line {
        std::vector<song::EventLink> notes;
        std::size_t ended = 0;
    };

    std::vector<Line> lines_;
    std::vector<std::size_t> used_;
};

/// The event begins or ends a note and is not removed.
inline bool IsNote(const song::MidiEvent& event) {
    return event.length > 0 &&
           (event.Command() == song::kNoteOn || event.Command() == song::kNoteOff);
}

/// The notes that sound where a track is cut: begun before the tick and not ended before it.
struct NotesAtTick {
    /// Note-ons by channel and pitch, the older first.
    std::vector<song::EventLink> open;
    /// The note-ons and note-offs of those that end exactly there. Sorted.
    std::vector<std::uint32_t> endingOns;
    std::vector<std::uint32_t> endingOffs;

    /// The open ones that sound on.
    std::vector<song::EventLink> Across() const;
    bool EndsHere(song::EventLink off) const;
};

/// Scans the notes of one track up to the last of `ticks`, which rise and lie before End of Track.
/// Linear. `open` is a table to use, its contents are lost. Throws std::bad_alloc.
std::vector<NotesAtTick> ScanNotes(song::Track& track, std::span<const std::int32_t> ticks,
                                   OpenNotes& open, const NoteFaultListener& listener = {});

} // namespace tracksmith::editing
