#pragma once

#include <cstdint>

#include "song/song.h"

namespace tracksmith::song {

/// A song is at least so many ticks long.
inline constexpr std::uint32_t kShortestSong = 999;
/// Ticks that a song goes on behind its last event.
inline constexpr std::uint32_t kRoomBehindLastEvent = 10;

/// The length in ticks that loading gives a song: up to the last event that is no meta event from
/// End of Track on, and the room behind it. Linear in the number of events.
std::int32_t FindSongLength(const Song& song);

/// Gives the song that length, moves every End of Track there and lists the key signatures anew:
/// for what has moved events. Times and zones are left to UpdateTimeZoneData. Throws
/// std::bad_alloc.
void RenewSongLength(Song& song);

} // namespace tracksmith::song
