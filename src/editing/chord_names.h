#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "editing/range_position.h"
#include "song/song.h"

namespace tracksmith::editing {

/// Whether the event is a chord: the sequencer-specific event (RP-001, meta 0x7F) of the XF format
/// that Yamaha publishes, 43 7B 01 and root, type, bass and bass type.
bool IsChord(const song::MidiEvent& event);

/// Root or bass of such an event moved by semitones: accidental in the high nibble (3 natural),
/// note from 1 (C) to 7 (B) in the low one. What is no note stays.
std::uint8_t MovedRoot(std::uint8_t root, int semitones);

/// A chord name ("Am7", "F#/C", "Bb") moved by semitones; empty when it is none. Sharp names become
/// sharp ones, flat names flat ones. `german`: H is B, B is Bb.
std::string MovedChordName(std::string_view name, int semitones, bool german);

/// A lyric with its chord names between hyphens ("-Am7-") or brackets ("[Am7]") moved.
std::string MovedLyric(std::string_view lyric, int semitones, bool german);

/// Moves the chords and the chord names in the lyrics of the range. Names count as German where the
/// song has one of an H. Throws std::bad_alloc.
void MoveChords(song::Song& song, const TickRange& range, int semitones);

/// The chords that stand in the range, as they are shown: of chord events, and names in lyrics as
/// MoveChords finds them. In playing order; one that stands already is not repeated. At most
/// `most`. Throws std::bad_alloc.
std::vector<std::string> ChordsIn(const song::Song& song, const TickRange& range, std::size_t most);

/// The chord events of a song and the track of the last.
struct ChordEvents {
    std::int32_t count = 0;
    std::size_t track = 0;

    bool Any() const { return count > 0; }
};
ChordEvents FindChordEvents(const song::Song& song);

} // namespace tracksmith::editing
