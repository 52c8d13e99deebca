#pragma once

#include <cstdint>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// The DriverCallback of all ports, with a TMidiCtlInfo as `instance`. Runs on a driver's thread:
/// it only queues and posts. Received messages that the record filters or that have no queue are
/// dropped; one that finds the queue full is lost and kInputOverflow is posted.
void DriverNotification(DeviceHandle handle, std::uint32_t message, void* instance,
                        std::uintptr_t param1, std::uintptr_t param2) noexcept;

/// Message to the port's own thread: a received message found the queue full.
inline constexpr std::uint32_t kInputOverflow = 1024;

} // namespace tracksmith::midi
