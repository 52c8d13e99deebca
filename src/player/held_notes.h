#pragma once

#include <cstdint>
#include <vector>

#include "song/song.h"

namespace tracksmith::player {

/// A key of a source channel.
struct HeldNote {
    std::uint8_t channel;
    std::uint8_t key;
};

/// The notes that a track has begun before its play cursor and not ended, each as often as it was
/// begun. Throws std::bad_alloc.
std::vector<HeldNote> HeldNotes(const song::Track& track);

} // namespace tracksmith::player
