#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "song/event_pool.h"
#include "song/midi_event.h"

namespace tracksmith::song {

/// Tempo assumed where a song names none, in microseconds per quarter note.
inline constexpr std::int32_t kDefaultTempo = 500'000;

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

/// A change of metre.
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

/// A key signature (RP-001, meta event 0x59).
struct KeySignatureEntry {
    /// Flats (negative) or sharps (positive), as the file has them.
    std::int8_t sharps = 0;
    /// 0 major, 1 minor.
    std::uint8_t minor = 0;
    /// Position in ticks; -1 while the entry is unfilled.
    std::int32_t tick = -1;
};

/// A stretch of the song with one tempo and one metre.
struct TimeZoneEntry {
    /// Measure, beat (both from 1) and tick within the beat at which the zone starts.
    std::int32_t measure = 1;
    std::uint8_t beat = 1;
    std::uint16_t beatTick = 0;
    /// Start in ticks.
    std::int32_t tick = 0;
    std::uint8_t denominator = 4;
    std::uint8_t numerator = 4;
    /// Quarter notes per minute.
    std::uint16_t bpm = 120;
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

/// One track: a chain of events between a head event (MIDI port 0) and End of Track.
struct Track {
    /// Free for a song-wide setting; 0 after loading.
    std::int32_t trackSetting = 0;
    /// Events in the chain, head and End of Track included.
    std::int32_t eventCount = 0;
    /// The head event.
    EventLinkField first;
    /// Skipped by song-wide scans and by playback when 1.
    std::uint8_t ignored = 0;
    /// The last event; appending goes through it.
    EventLinkField last;
    /// 1 when the track is made.
    std::int32_t trackFlags = 1;
    /// Channel 0-15 of the track's first channel message, 0xFF while none is known.
    std::uint8_t channel = 0xFF;
    /// First track name of the track, in the file's own bytes.
    std::string name;
    /// 0xFF when the track is made.
    std::uint8_t trackMark = 0xFF;
    /// Play cursor: the next event to send. At `first` after loading, then written by the player
    /// only, like the field behind it.
    EventLinkField cursor;
    /// Loop start of the playback.
    EventLinkField loopCursor;
    /// Added to the comparison time while playing, in milliseconds.
    std::int32_t timeShiftMs = 0;
    /// Silent while playing when 1.
    std::uint8_t muted = 0;
};

/// Everything that a song consists of but the memory of its events.
struct SongRecord {
    /// Format in force: 0 or 1.
    std::uint8_t format = 0;
    /// Format byte of the file (0 for a file with one track), before any split.
    std::uint8_t fileFormat = 0;
    std::vector<Track> tracks;
    std::int32_t trackCount = 0;
    /// Ticks per quarter note, as the file has it; 0 is calculated as 1.
    std::uint16_t division = 480;
    std::int32_t divisionFifth = 96;
    /// Length in ticks; every End of Track stands here. At least 999 once a file is loaded.
    std::int32_t songLength = 0;
    /// Tempo changes and one spare entry.
    std::vector<TempoEntry> tempos;
    std::int32_t tempoCount = 0;
    /// Changes of metre and one spare entry.
    std::vector<TimeSignatureEntry> timeSignatures;
    std::int32_t timeSignatureCount = 0;
    /// Key signatures, one array per track.
    std::vector<std::vector<KeySignatureEntry>> keySignatures;
    /// Tempo and metre merged; the entry timeZoneCount - 1 is the closing one behind the song.
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
    /// Option for reading: running status survives system exclusive and meta events when not 0.
    std::int32_t runningStatusAcrossSysex = 0;
};

/// The song: its records and the pool that holds its events. One thread changes it at a time; the
/// playback thread only reads it.
struct Song : SongRecord {
    EventPool pool;

    /// Exchanges everything with `other`; links stay good and belong to the other song then.
    void Swap(Song& other) noexcept {
        std::swap(static_cast<SongRecord&>(*this), static_cast<SongRecord&>(other));
        pool.Swap(other.pool);
    }
};

/// Empties the song but keeps its options and its memory.
void ClearSong(Song& song);

/// Ticks per quarter note to calculate with: at least 1.
inline std::int32_t EffectiveDivision(const SongRecord& song) {
    return song.division == 0 ? 1 : song.division;
}

} // namespace tracksmith::song
