#pragma once

#include "song/song.h"

namespace tracksmith::editing {

/// A copy of the event with its payload, in no chain. Throws std::bad_alloc.
song::EventLink CopyEvent(const song::MidiEvent& event, song::EventPool& pool);

} // namespace tracksmith::editing
