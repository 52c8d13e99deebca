#pragma once

#include <cstdint>
#include <optional>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// Number of the first device of a driver for whose DeviceCapabilities `matches` is true.
template <typename Driver, typename Matches>
std::optional<std::uint32_t> FindDevice(Driver& driver, Matches matches) {
    const std::uint32_t count = driver.DeviceCount();
    for (std::uint32_t device = 0; device < count; ++device) {
        DeviceCapabilities capabilities;
        if (driver.Capabilities(device, capabilities) == kNoError && matches(capabilities)) {
            return device;
        }
    }
    return std::nullopt;
}

} // namespace tracksmith::midi
