#pragma once

#include <functional>
#include <memory>

#include "app/devices/midi_devices.h"

namespace tracksmith::cli {

/// Makes the MIDI devices when a command needs them; never null.
using OpenDevices =
    std::function<std::unique_ptr<devices::MidiDevices>(const devices::SynthOptions&)>;

/// The devices of this machine.
inline std::unique_ptr<devices::MidiDevices> OpenSystemDevices(
    const devices::SynthOptions& options) {
    // A machine that is busy may take longer than a window could wait.
    constexpr std::chrono::milliseconds kPatience{400};
    return std::make_unique<devices::MidiDevices>(options, kPatience);
}

} // namespace tracksmith::cli
