#pragma once

#include <cstdint>
#include <optional>

#include "song/song.h"

namespace tracksmith::instruments {

/// Clock time in milliseconds of `tick`, for an event that is put there. Also right just after
/// decoding, when the song has lists of tempos and time signatures but no time zones yet.
std::int32_t MsOfTick(const song::Song& song, std::int32_t tick);

/// The same for many places, and the way back. The song must outlive it and keep its tempos.
class InsertionClock {
public:
    explicit InsertionClock(const song::Song& song);

    std::int32_t MsOf(std::int32_t tick) const;
    /// The first tick that sounds at `ms` milliseconds or later; at most the song's length.
    std::int32_t FirstTickAt(std::int32_t ms) const;
    /// The last tick that sounds earlier than `tick`; -1 for none.
    std::int32_t LastTickBefore(std::int32_t tick) const;

private:
    const song::Song& Mapped() const { return own_ ? *own_ : song_; }

    const song::Song& song_;
    std::optional<song::Song> own_; // a time map for a song that has none
};

} // namespace tracksmith::instruments
