#include "app/devices/system_backends.h"
#include "midi/backends/winmm/driver.h"

namespace tracksmith::devices {

SystemDrivers MakeSystemDrivers(std::chrono::milliseconds /*patience*/) {
    SystemDrivers drivers;
    drivers.outputs.push_back(std::make_unique<midi::WinmmOutputDriver>());
    drivers.inputs.push_back(std::make_unique<midi::WinmmInputDriver>());
    return drivers;
}

} // namespace tracksmith::devices
