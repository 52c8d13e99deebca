#pragma once

#include <cstdint>
#include <optional>

#include "instruments/sysex/operation_table.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// The channels that play drums somewhere in the song, a bit for each: channel 10, and those that a
/// part mode or a bank of kits makes drum parts, as PartVoices follows them for an instrument of
/// the way, or for what the song's resets ask without one. Needs clock times; throws
/// std::bad_alloc.
std::uint32_t DrumChannels(const song::Song& song, std::optional<DrumWay> way);

} // namespace tracksmith::instruments
