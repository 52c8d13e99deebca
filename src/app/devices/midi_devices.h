#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "app/devices/synth_device.h"
#include "app/devices/system_backends.h"
#include "midi/driver_set.h"
#include "player/output_ports.h"

namespace tracksmith::devices {

/// All MIDI devices of this machine and the built-in instrument. Both programs make one; it must
/// outlive the player. User-interface thread.
class MidiDevices {
public:
    /// How long a window waits for a MIDI system that does not answer.
    static constexpr std::chrono::milliseconds kPatience{150};

    explicit MidiDevices(const SynthOptions& options,
                         std::chrono::milliseconds patience = kPatience);
    /// Only the given ones, for tests.
    MidiDevices(SystemDrivers drivers, std::unique_ptr<SynthDevice> synth);

    /// What the player takes as its outputs.
    std::vector<player::OutputDriver> Outputs();
    midi::MidiInputDriver& Input() { return inputs_; }
    /// The built-in instrument; null in a program that is built without it.
    SynthDevice* Synth() { return synth_.get(); }

private:
    midi::MidiOutputDriverSet outputs_;
    midi::MidiInputDriverSet inputs_;
    std::unique_ptr<SynthDevice> synth_;
};

} // namespace tracksmith::devices
