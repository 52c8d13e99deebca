#include "app/devices/synth_device.h"

namespace tracksmith::devices {

bool HasSynthDevice() {
    return false;
}

std::unique_ptr<SynthDevice> MakeSynthDevice(const SynthOptions& /*options*/) {
    return nullptr;
}

} // namespace tracksmith::devices
