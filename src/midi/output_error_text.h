#pragma once

#include <string>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// The kinds of operations of an output port whose failures have texts of their own.
enum class OutputOperation { Caching, ShortMessage, LongMessage, PrepareHeader, Other };

/// The text for a failed operation: that of the operation, else the driver's, else a common one.
std::string OutputErrorText(OutputOperation operation, ResultCode code, MidiOutputDriver& driver);

} // namespace tracksmith::midi
