#pragma once

#include <string_view>

#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {

/// The maker that a message (data without F0) names with its first byte, or with three bytes when
/// the first is 0; empty for one that is not listed. Source: the manufacturer list of the MIDI
/// Association. Any thread.
std::string_view ManufacturerOf(SysexBytes data);

} // namespace tracksmith::instruments
