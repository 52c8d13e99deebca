#pragma once

#include <memory>

#include "midi/port_backend.h"

namespace tracksmith::midi::alsa {

/// The ports of the ALSA sequencer; none while the system has no sequencer. The sequencer does not
/// tell of a vanished port here, so an open output answers kNoDriver from the first call of
/// Outputs on that no longer finds its port.
std::unique_ptr<PortBackend> MakePortBackend();

} // namespace tracksmith::midi::alsa
