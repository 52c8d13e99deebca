#pragma once

#include "song/song.h"

namespace tracksmith::editing {

/// Appends a copy of a track, with copies of all its events, to `target`; its key signatures are
/// left to the caller. Throws std::bad_alloc.
void AppendTrack(const song::Track& source, song::Song& target);

/// Makes `target` a copy of `source`: a song of its own, with paired notes and a time map. Linear.
/// Throws std::bad_alloc.
void CopySong(const song::Song& source, song::Song& target);

} // namespace tracksmith::editing
