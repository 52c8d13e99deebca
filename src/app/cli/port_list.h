#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/text.h"

#include "app/cli/open_devices.h"

namespace tracksmith::cli {

/// What can be told of a MIDI port.
struct PortDescription {
    bool output = false;
    std::string name;
    /// Number of the kind of port, as in midi::DeviceCapabilities.
    std::uint16_t technology = 0;
    bool builtIn = false;
    /// It could be opened just now.
    bool usable = false;
    /// Why it is not usable, or what is wrong with its sound; empty when all is well.
    std::string problem;
};

/// All outputs, then all inputs, each opened for a moment to see whether it can be used.
/// `language` is that of the problems.
std::vector<PortDescription> ListPorts(devices::MidiDevices& devices, Language language);

} // namespace tracksmith::cli
