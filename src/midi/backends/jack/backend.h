#pragma once

#include <memory>

#include "midi/port_backend.h"

namespace tracksmith::midi::jack {

/// The ports of the JACK server that JACK_DEFAULT_SERVER or JACK's own default names. A server is
/// never started; while there is none there are no ports. A server that ends makes open outputs
/// answer kNoDriver; one that comes (back) is found by the next listing after at most two seconds.
/// A product name is the port's name, `client:port`, or its alias where the name says nothing.
/// Replaces the process-wide message functions of the JACK library by ones that print nothing.
std::unique_ptr<PortBackend> MakePortBackend();

} // namespace tracksmith::midi::jack
