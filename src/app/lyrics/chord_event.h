#pragma once

#include <optional>
#include <string>

#include "song/midi_event.h"

namespace tracksmith::lyrics {

/// The name of the chord that an event of arranger keyboards sets: a sequencer-specific meta event
/// 43 7B 01, or the chord-control message F0 43 7E 02, each with root, type, bass and bass type
/// (Yamaha XF format, data list of the PSR-S950). Empty where the event ends the chord; none for
/// other events and for roots and types that are not defined.
std::optional<std::string> ChordOf(const song::MidiEvent& event);

} // namespace tracksmith::lyrics
