#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/message_host.h"

#include "song/load_report.h"
#include "song/measure_sink.h"
#include "song/note_length.h"
#include "song/song.h"
#include "song/sysex_place.h"

namespace tracksmith::song {

/// Fewest bytes that a file must have to be looked at.
inline constexpr std::size_t kSmallestFile = 24;

/// Options of the decoder beside those that the song itself carries.
struct DecodeOptions {
    /// Split a format 0 file into a conductor track and one track per channel.
    bool splitFormat0 = false;
    /// Let a track name that contains "zel_ignore" set the track's `ignored` flag.
    bool honourZelIgnore = false;
    /// Notes shorter than so many ticks are reported; none at 0.
    std::int32_t minimumNoteLength = 0;
    /// Bytes that the song may take; 0 means SongMemoryBudget().
    std::uint64_t memoryBudget = 0;
};

/// What the decoder found out beside the song.
struct DecodeResult {
    LoadReport report;
    /// All tempo and time signature events are in the track that the file has first.
    bool tempoMapInFirstTrack = true;
    /// `timeMs` of every event already fits the tempo map.
    bool timesAreSet = false;
    /// All system-exclusive events, in track order and then chain order.
    std::vector<SysexPlace> sysex;
    /// A channel selects a bank (MSB) from kGm2DrumBank on, which some instruments take for drums.
    bool drumBanks = false;
    /// Note-ons and note-offs are in balance on every track; where this is false the balance check
    /// tells.
    bool balanced = true;
    /// The ends of the notes that are too short, by track or, in a split song, as the file has
    /// them.
    std::vector<NoteEnd> shortNotes;
};

/// Decodes a Standard MIDI File (RP-001; formats 0, 1 and 2) from `file` into the emptied `song`:
/// tracks with head and End of Track events, `tempos` and `timeSignatures` of the first track, key
/// signatures, song length. Strict: any fault is shown through `host` and raised as EMidiError, and
/// `song` must then be cleared by the caller. Linear in the file's size; nothing is sized from the
/// header's promises.
DecodeResult DecodeMidiData(Song& song, std::span<const std::uint8_t> file,
                            const DecodeOptions& options, MessageHost& host);

/// Walks over the whole file with every check of the decoder and only sums what it sees: the
/// yardstick for the speed of loading. Raises like DecodeMidiData.
ScanResult ScanMidiData(std::span<const std::uint8_t> file, MessageHost& host);

} // namespace tracksmith::song
