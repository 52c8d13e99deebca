#pragma once

#include <string>

#include "song/song.h"

namespace tracksmith::song {

/// The first broken invariant of the song as a sentence, empty when all hold: links agree in both
/// directions, counts are right, ticks never fall, every chain starts with its head event and ends
/// with End of Track at the song's length. Meta events that do not count towards the length (tempo
/// and the like) may lie behind it. For tests and for checks after edits.
std::string CheckSong(const Song& song);

} // namespace tracksmith::song
