#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tracksmith::song {

/// Tempo assumed where a song names none, in microseconds per quarter note.
inline constexpr std::int32_t kDefaultTempo = 500'000;

/// Microseconds per quarter note to calculate with: what no file may say counts as the default.
constexpr std::int32_t TempoOrDefault(std::int32_t tempo) {
    return tempo <= 0 ? kDefaultTempo : tempo;
}

/// A tempo change.
struct TempoEntry {
    /// Microseconds per quarter note; all three hold the file's value after loading. `tempo` is in
    /// force, the other two keep the original for tempo controls.
    std::int32_t tempo = kDefaultTempo;
    std::int32_t fileTempo = kDefaultTempo;
    std::int32_t savedTempo = kDefaultTempo;
    /// Position in ticks; -1 while the entry is unfilled.
    std::int32_t tick = -1;
    /// Quarter notes per minute, rounded.
    std::uint16_t bpm = 120;
};

/// A change of time signature.
struct TimeSignatureEntry {
    /// Notated 32nd notes per MIDI quarter note.
    std::uint8_t thirtySecondsPerQuarter = 8;
    /// Note value of a beat: 1, 2, 4 ... 128.
    std::uint8_t denominator = 4;
    /// Beats in a measure.
    std::uint8_t numerator = 4;
    /// Position in ticks; -1 while the entry is unfilled.
    std::int32_t tick = -1;
    /// MIDI clocks per metronome click.
    std::uint8_t clocksPerClick = 36;
};

/// A stretch of the song with one tempo and one time signature.
struct TimeZoneEntry {
    /// Measure, beat (both from 1) and tick within the beat at which the zone starts.
    std::int32_t measure = 1;
    std::uint8_t beat = 1;
    std::uint16_t beatTick = 0;
    /// Start in ticks.
    std::int32_t tick = 0;
    std::uint8_t denominator = 4;
    std::uint8_t numerator = 4;
    /// Quarter notes per minute, and those of the file where a tempo control has moved them.
    std::uint16_t bpm = 120;
    std::uint16_t fileBpm = 120;
    /// Milliseconds per tick.
    float msPerTick = 0;
    /// Microseconds per quarter note.
    std::int32_t tempo = kDefaultTempo;
    /// Start in milliseconds.
    std::int32_t startMs = 0;
    /// `beatTick` in milliseconds at the tempo of the zone before.
    std::int32_t beatTickMs = 0;
    /// Microseconds per beat.
    std::int32_t usPerBeat = kDefaultTempo;
};

/// By what a song's places are reckoned in ticks, in measures and in time, and where the song ends.
/// Part of every song; a copy of it reads positions without the song.
struct TimeMap {
    /// Ticks per quarter note, as the file has it; 0 is calculated as 1.
    std::uint16_t division = 480;
    /// Length in ticks; every End of Track stands here. At least 999 once a file is loaded.
    std::int32_t songLength = 0;
    /// Tempo changes and one spare entry.
    std::vector<TempoEntry> tempos;
    std::int32_t tempoCount = 0;
    /// Changes of time signature and one spare entry.
    std::vector<TimeSignatureEntry> timeSignatures;
    std::int32_t timeSignatureCount = 0;
    /// Tempo and time signature merged; the entry timeZoneCount - 1 is the closing one behind the
    /// song.
    std::vector<TimeZoneEntry> timeZones;
    std::int32_t timeZoneCount = 0;
    std::int32_t lengthMs = 0;
    /// Song length as measure and beat (from 1) and tick.
    std::int32_t lengthMeasure = 1;
    std::int32_t lengthBeat = 1;
    std::int32_t lengthTick = 0;
    /// Song length as a digit string for the position display.
    std::string lengthText;
    /// Decimal digits of `division`.
    std::int32_t divisionDigits = 3;
    /// Characters of a position text.
    std::int32_t positionWidth = 10;
};

/// Ticks per quarter note to calculate with: at least 1.
inline std::int32_t EffectiveDivision(const TimeMap& map) {
    return map.division == 0 ? 1 : map.division;
}

} // namespace tracksmith::song
