#pragma once

#include <cstdint>

#include "song/song.h"

namespace tracksmith::song {

/// Rebuilds `tempos` and `timeSignatures` from the meta events of all tracks, in track order and
/// then chain order. The spare entry behind the last gets the tick songLength + 1.
void ReloadTempoTimeSign(Song& song);

/// The part of ReloadTempoTimeSign behind the collecting: fills the first entries where none was
/// found and the spare ones. For lists that already hold every tempo and time signature event.
void CompleteTempoTimeSign(Song& song);

/// Puts default entries in front of the two lists where needed, turns halves into quarters
/// (2/2 becomes 4/4), merges the lists into `timeZones` and computes every zone's position and the
/// song-end fields.
void SetTimeZones(TimeMap& map);

/// Recomputes the positions of the existing zones and the song-end fields, for when only the song's
/// length has changed.
void UpdateTimeZones(TimeMap& map);

/// Recomputes `timeMs` of every event from the zones: one walk over each track.
void SetTimePositions(Song& song);

/// ReloadTempoTimeSign, SetTimeZones and SetTimePositions: for editors after a change.
void UpdateTimeZoneData(Song& song);

/// The largest event time of the song in milliseconds.
std::int64_t LargestTime(const Song& song);

/// Milliseconds per tick at `tempo` microseconds per quarter note (0 counts as 500,000).
float MsPerTick(std::int32_t tempo, std::int32_t division);

/// Quarter notes per minute at `tempo` microseconds per quarter note, rounded, at most 65,535.
std::uint16_t BpmOfTempo(std::int32_t tempo);

/// The tempo entry of a tempo event (RP-001, meta 0x51); missing bytes count as 0, tempo 0 as
/// 500,000.
TempoEntry TempoEntryOf(const MidiEvent& event);

/// The entry of a time-signature event (RP-001, meta 0x58); missing bytes count as 0, a numerator
/// of 0 or an exponent above 7 as 4.
TimeSignatureEntry TimeSignatureEntryOf(const MidiEvent& event);

} // namespace tracksmith::song
