#pragma once

#include <cstdint>
#include <vector>

#include "base/text.h"

namespace tracksmith::app {

/// A Standard MIDI File (RP-001) of a song without notes: format 1, 480 ticks a quarter note, 120
/// BPM, 4/4, a conductor track and a track for each of the 16 channels, named in `language`, with
/// voice, volume, panorama, expression, reverb and chorus at their General MIDI values.
std::vector<std::uint8_t> EmptySongBytes(Language language);

} // namespace tracksmith::app
