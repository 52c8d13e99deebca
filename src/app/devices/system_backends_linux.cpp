#include <array>

#include "app/devices/system_backends.h"
#include "midi/backends/alsa/backend.h"
#include "midi/backends/jack/backend.h"
#include "midi/portable_driver.h"
#include "midi/portable_input_driver.h"

namespace tracksmith::devices {

SystemDrivers MakeSystemDrivers(std::chrono::milliseconds patience) {
    SystemDrivers drivers;
    const std::array<std::shared_ptr<midi::PortBackend>, 2> systems{
        midi::alsa::MakePortBackend(), midi::jack::MakePortBackend(patience)};
    for (const std::shared_ptr<midi::PortBackend>& system : systems) {
        drivers.outputs.push_back(std::make_unique<midi::PortableOutputDriver>(system));
        drivers.inputs.push_back(std::make_unique<midi::PortableInputDriver>(system));
    }
    return drivers;
}

} // namespace tracksmith::devices
