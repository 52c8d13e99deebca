#include "app/devices/midi_devices.h"

#include <utility>

namespace tracksmith::devices {

MidiDevices::MidiDevices(const SynthOptions& options, std::chrono::milliseconds patience)
    : MidiDevices(MakeSystemDrivers(patience), MakeSynthDevice(options)) {}

MidiDevices::MidiDevices(SystemDrivers drivers, std::unique_ptr<SynthDevice> synth)
    : outputs_(std::move(drivers.outputs)),
      inputs_(std::move(drivers.inputs)),
      synth_(std::move(synth)) {}

std::vector<player::OutputDriver> MidiDevices::Outputs() {
    std::vector<player::OutputDriver> all{{&outputs_, false}};
    if (synth_) {
        all.push_back({&synth_->Driver(), true});
    }
    return all;
}

} // namespace tracksmith::devices
