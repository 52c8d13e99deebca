#pragma once

#include <bitset>

#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::song {

/// The channels that play drums anywhere in the song: the tenth, and those that a message or a bank
/// select (GM2 120, XG 126 and 127) turns into a drum part. Linear in the number of events.
std::bitset<kMidiChannels> DrumChannels(const Song& song);

} // namespace tracksmith::song
