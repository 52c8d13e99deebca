#pragma once

#include <string>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// The text for a code where the system has none of its own; empty for an unknown code.
std::string PortableErrorText(ResultCode code);

} // namespace tracksmith::midi
