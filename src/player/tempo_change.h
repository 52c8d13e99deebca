#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "player/play_position.h"
#include "song/song.h"

namespace tracksmith::player {

/// Slowest and fastest tempo that a tempo offset can give, in quarter notes per minute.
inline constexpr std::int32_t kSlowestBpm = 25;
inline constexpr std::int32_t kFastestBpm = 65'535;

/// Microseconds per quarter note of a tempo that is moved by `offset` quarter notes per minute; an
/// offset of 0 is the tempo itself.
std::int32_t MovedTempo(std::int32_t fileTempo, std::int32_t offset);

/// The time map of a song as it stands.
std::shared_ptr<const TimeMap> TimeMapOf(const song::Song& song);

/// `base` at a tempo offset, always reckoned from the tempos of the file. Throws std::bad_alloc.
std::shared_ptr<const TimeMap> MovedTimeMap(const TimeMap& base, std::int32_t offset);

/// Position in microseconds, by `after`, of the place that lies at `us` by `before`; the two maps
/// differ only in their tempos.
std::int64_t SamePlace(const TimeMap& before, const TimeMap& after, std::int64_t us);

/// The largest event time of the song in milliseconds.
std::int64_t LargestTime(const song::Song& song);

/// The tempo events of a song with the tempos that their file gave them, so that moves of the tempo
/// do not add up.
class TempoEvents {
public:
    /// Finds the tempo events after the song was loaded (`keepFileTempos` false) or edited: then
    /// events that still have the tempo which Rewrite gave them keep their file's. Corrects
    /// `fileTempo` of the song's entries. Throws std::bad_alloc.
    void Collect(song::Song& song, bool keepFileTempos);

    /// Gives every tempo event its tempo at `offset`. Allocates nothing.
    void Rewrite(std::int32_t offset);

private:
    struct Entry {
        song::EventLink event;
        std::int32_t fileTempo = 0;
        std::int32_t tempo = 0;
    };
    std::vector<Entry> entries_;
};

/// Takes tempos, time zones and song end of `map` over into the song and re-times every event.
/// Allocates nothing when the song has as many zones as the map.
void RetimeSong(song::Song& song, const TimeMap& map);

} // namespace tracksmith::player
