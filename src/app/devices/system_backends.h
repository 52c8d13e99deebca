#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::devices {

/// The drivers of the MIDI systems that this operating system has.
struct SystemDrivers {
    std::vector<std::unique_ptr<midi::MidiOutputDriver>> outputs;
    std::vector<std::unique_ptr<midi::MidiInputDriver>> inputs;
};

/// Makes them; a system that is not running has a driver without devices. One that does not answer
/// is waited for at most about `patience` in each call. User-interface thread.
SystemDrivers MakeSystemDrivers(std::chrono::milliseconds patience);

} // namespace tracksmith::devices
