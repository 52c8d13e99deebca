#pragma once

#include <cstdint>

#include "song/event_link.h"

namespace tracksmith::song {

/// Where a system-exclusive event stands in a song.
struct SysexPlace {
    EventLink event;
    /// Index of its track.
    std::int32_t track = 0;
};

} // namespace tracksmith::song
