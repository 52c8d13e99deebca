#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "midi/handle_table.h"
#include "midi/header_lending.h"
#include "midi/midi_driver.h"
#include "midi/port_list.h"

namespace tracksmith::midi {

/// The devices and the open ports of PortableOutputDriver or PortableInputDriver; what the calls of
/// both do alike. A `Port` has the callback with its instance and handle, a pointer `connection`,
/// the `mutex` that guards the headers' flags, and `ResultCode End()`, which refuses while headers
/// are lent.
template <typename Port>
class PortableDriverPorts {
public:
    /// `list` asks the back end for the devices.
    explicit PortableDriverPorts(std::function<std::vector<DeviceCapabilities>()> list)
        : list_(std::move(list)) {}

    /// Counts the devices anew.
    std::uint32_t Count() { return list_.Count(); }

    ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) {
        const auto listed = list_.At(device);
        if (!listed) {
            return kBadDeviceId;
        }
        capabilities = *listed;
        return kNoError;
    }

    /// Opens a device; `connect(port, productName, result)` gives the connection of the back end,
    /// or null and the reason in `result`.
    template <typename Connect>
    ResultCode Open(std::uint32_t device, DriverCallback callback, void* instance,
                    DeviceHandle& handle, Connect connect) {
        const auto listed = list_.At(device);
        if (!listed) {
            return kBadDeviceId;
        }
        auto port = std::make_shared<Port>();
        port->callback = callback;
        port->instance = instance;
        ResultCode result = kNoError;
        port->connection = connect(*port, listed->productName, result);
        if (port->connection == nullptr) {
            return result != kNoError ? result : kUnspecifiedError;
        }
        handle = ports_.Add(port);
        const std::scoped_lock lock(port->mutex);
        port->handle = handle;
        return kNoError;
    }

    /// A port that still has headers stays open.
    ResultCode Close(DeviceHandle handle) {
        const ResultCode result = With(handle, [](Port& port) { return port.End(); });
        if (result == kNoError) {
            ports_.Remove(handle);
        }
        return result;
    }

    ResultCode PrepareHeader(DeviceHandle handle, MidiHeader& header) const {
        return WithLocked(handle, [&](Port& /*port*/) { return Prepare(header); });
    }

    ResultCode UnprepareHeader(DeviceHandle handle, MidiHeader& header) const {
        return WithLocked(handle, [&](Port& /*port*/) { return Unprepare(header); });
    }

    /// Calls `operation` with the open port.
    template <typename Operation>
    ResultCode With(DeviceHandle handle, Operation operation) const {
        const auto port = ports_.Find(handle);
        return port != nullptr ? operation(*port) : kInvalidHandle;
    }

    /// Calls `operation` with the open port while its mutex is held.
    template <typename Operation>
    ResultCode WithLocked(DeviceHandle handle, Operation operation) const {
        return With(handle, [&](Port& port) {
            const std::scoped_lock lock(port.mutex);
            return operation(port);
        });
    }

    std::vector<std::shared_ptr<Port>> All() const { return ports_.All(); }

private:
    PortList list_;
    HandleTable<Port> ports_;
};

} // namespace tracksmith::midi
