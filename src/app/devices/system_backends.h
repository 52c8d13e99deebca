#pragma once

#include <memory>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::devices {

/// The drivers of the MIDI systems that this operating system has.
struct SystemDrivers {
    std::vector<std::unique_ptr<midi::MidiOutputDriver>> outputs;
    std::vector<std::unique_ptr<midi::MidiInputDriver>> inputs;
};

/// Makes them; a system that is not running has a driver without devices. User-interface thread.
SystemDrivers MakeSystemDrivers();

} // namespace tracksmith::devices
