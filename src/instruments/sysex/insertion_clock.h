#pragma once

#include <cstdint>

#include "song/song.h"

namespace tracksmith::instruments {

/// Clock time in milliseconds of `tick`, for an event that is put there. Also right just after
/// decoding, when the song has lists of tempos and time signatures but no time zones yet.
std::int32_t MsOfTick(const song::Song& song, std::int32_t tick);

} // namespace tracksmith::instruments
