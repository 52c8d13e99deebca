#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "song/event_pool.h"
#include "song/midi_event.h"
#include "song/time_map_record.h"

namespace tracksmith::song {

/// A key signature (RP-001, meta event 0x59).
struct KeySignatureEntry {
    /// Flats (negative) or sharps (positive), as the file has them.
    std::int8_t sharps = 0;
    /// 0 major, 1 minor.
    std::uint8_t minor = 0;
    /// Position in ticks; -1 while the entry is unfilled.
    std::int32_t tick = -1;
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
struct SongRecord : TimeMap {
    /// Format in force: 0 or 1.
    std::uint8_t format = 0;
    /// Format byte of the file (0 for a file with one track), before any split.
    std::uint8_t fileFormat = 0;
    std::vector<Track> tracks;
    std::int32_t trackCount = 0;
    std::int32_t divisionFifth = 96;
    /// Key signatures, one array per track.
    std::vector<std::vector<KeySignatureEntry>> keySignatures;
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

} // namespace tracksmith::song
