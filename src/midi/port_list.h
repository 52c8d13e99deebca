#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// The ports of a back end as they were when they were last counted, so that a number means the
/// same port until the next count. Thread safe.
class PortList {
public:
    /// `list` asks the back end.
    explicit PortList(std::function<std::vector<DeviceCapabilities>()> list);

    /// Asks the back end anew and returns the number of ports.
    std::uint32_t Count();
    /// The port of a number; nothing when there is none.
    std::optional<DeviceCapabilities> At(std::uint32_t device);

private:
    std::function<std::vector<DeviceCapabilities>()> list_;
    std::mutex mutex_;
    std::optional<std::vector<DeviceCapabilities>> ports_;
};

} // namespace tracksmith::midi
