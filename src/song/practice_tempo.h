#pragma once

#include <cstdint>
#include <vector>

#include "song/song.h"

namespace tracksmith::song {

/// Slowest and fastest tempo that a tempo offset gives, in quarter notes per minute.
inline constexpr std::int32_t kSlowestBpm = 25;
inline constexpr std::int32_t kFastestBpm = 65'535;

/// Quarter notes per minute that the file has at `tick`, at least 1; 120 without a time map.
std::int32_t FileBpmAt(const TimeMap& map, std::int64_t tick);

/// Quarter notes per minute in force at `tick`; 120 without a time map.
std::int32_t BpmAt(const TimeMap& map, std::int64_t tick);

/// The tempo in force at `tick` in per cent of the file's.
std::int32_t TempoPercentAt(const TimeMap& map, std::int64_t tick);

/// So many per cent of the file's tempo at `tick`, in quarter notes per minute, rounded.
std::int64_t BpmOfPercent(const TimeMap& map, std::int64_t tick, std::int64_t percent);

/// The tempo offset, in quarter notes per minute against the file's tempos, with which `tick` is
/// played at `bpm`, held within 25 and 65,535. The file's own tempo is an offset of 0, whatever it
/// is.
std::int32_t TempoOffsetForBpm(const TimeMap& map, std::int64_t tick, std::int64_t bpm);

/// Microseconds per quarter note of a tempo that is moved by `offset` quarter notes per minute and
/// held within the limits; an offset of 0 is the tempo itself.
std::int32_t MovedTempo(std::int32_t fileTempo, std::int32_t offset);

/// `base` at a tempo offset, always reckoned from the tempos of the file. Throws std::bad_alloc.
TimeMap MovedTimeMap(const TimeMap& base, std::int32_t offset);

/// Position in microseconds, by `after`, of the place that lies at `us` by `before`; the two maps
/// differ only in their tempos.
std::int64_t SamePlace(const TimeMap& before, const TimeMap& after, std::int64_t us);

/// A tempo event stands at the song's start. Only there can a practice tempo be saved.
bool BeginsWithTempo(const Song& song);

/// Puts a tempo event in front of the first track, for microseconds per quarter note below 2^24.
/// Throws std::bad_alloc.
void InsertFirstTempo(Song& song, std::int32_t tempo);

/// Takes `map` over into the song and re-times every event. Allocates nothing when the song has as
/// many zones as the map.
void RetimeSong(Song& song, const TimeMap& map);

/// The tempo events of a song as their file had them, so that moves of the tempo do not add up.
class TempoEvents {
public:
    /// Finds the tempo events after the song was loaded (`keepFileTempos` false) or edited: then
    /// events that still have the tempo which Rewrite gave them keep their file's. Corrects
    /// `fileTempo` of the song's entries. Throws std::bad_alloc.
    void Collect(Song& song, bool keepFileTempos);

    /// Gives every tempo event its tempo at `offset`; with 0 its bytes are again those of the file.
    /// The playback thread may read the events meanwhile. Allocates nothing.
    void Rewrite(std::int32_t offset);

private:
    struct Entry {
        EventLink event;
        // The three bytes as the file had them and as they are now.
        std::int32_t fileBytes = 0;
        std::int32_t bytes = 0;
    };
    std::vector<Entry> entries_;
};

} // namespace tracksmith::song
