#pragma once

#include <chrono>
#include <memory>

#include "midi/port_backend.h"

namespace tracksmith::midi::jack {

/// The ports of the JACK server that JACK_DEFAULT_SERVER or JACK's own default names. A server is
/// never started; while there is none there are no ports. A server that ends makes open outputs
/// answer kNoDriver; one that comes (back) is found by the next listing after at most two seconds.
/// No call waits longer than about `patience` for a server that does not answer: lists are then
/// those of before, and empty once it has not answered for two seconds; opening gives kNotReady and
/// goes on behind the scenes, so that it succeeds at a later try; closing goes on alone.
/// A product name is the port's name, `client:port`, or its alias where the name says nothing.
/// Replaces the process-wide message functions of the JACK library by ones that print nothing.
std::unique_ptr<PortBackend> MakePortBackend(
    std::chrono::milliseconds patience = std::chrono::milliseconds(200));

} // namespace tracksmith::midi::jack
