#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "midi/handle_table.h"
#include "midi/midi_driver.h"
#include "midi/port_name.h"

namespace tracksmith::midi {

/// Several drivers as one: devices are numbered on from driver to driver, as they were at the last
/// count, and handles know their driver. `Driver` is MidiOutputDriver or MidiInputDriver.
template <typename Driver>
class DriverUnion {
public:
    explicit DriverUnion(std::vector<std::unique_ptr<Driver>> drivers)
        : drivers_(std::move(drivers)) {}

    /// Counts the devices of all drivers anew.
    std::uint32_t Count() {
        const std::scoped_lock lock(mutex_);
        List();
        return static_cast<std::uint32_t>(devices_.size());
    }

    ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) {
        const std::scoped_lock lock(mutex_);
        const Device* listed = At(device);
        if (listed == nullptr) {
            return kBadDeviceId;
        }
        capabilities = listed->capabilities;
        return kNoError;
    }

    ResultCode Open(std::uint32_t device, DriverCallback callback, void* instance,
                    DeviceHandle& handle) {
        return WithDevice(device, [&](Driver& driver, std::uint32_t number) {
            auto port = std::make_shared<Port>(Port{&driver, 0, callback, instance, 0});
            port->outer = ports_.Add(port);
            const ResultCode result = driver.Open(number, &Forward, port.get(), port->inner);
            if (result != kNoError) {
                ports_.Remove(port->outer);
            } else {
                handle = port->outer;
            }
            return result;
        });
    }

    /// A port that its driver does not let go of stays open.
    ResultCode Close(DeviceHandle handle) {
        const ResultCode result =
            With(handle, [](Driver& driver, DeviceHandle inner) { return driver.Close(inner); });
        if (result == kNoError) {
            ports_.Remove(handle);
        }
        return result;
    }

    /// Calls `operation` with the driver and its own handle.
    template <typename Operation>
    ResultCode With(DeviceHandle handle, Operation operation) const {
        const auto port = ports_.Find(handle);
        return port != nullptr ? operation(*port->driver, port->inner) : kInvalidHandle;
    }

    /// Calls `operation` with the driver and its own device number.
    template <typename Operation>
    ResultCode WithDevice(std::uint32_t device, Operation operation) {
        std::unique_lock lock(mutex_);
        const Device* listed = At(device);
        if (listed == nullptr) {
            return kBadDeviceId;
        }
        Driver& driver = *listed->driver;
        const std::uint32_t number = listed->number;
        lock.unlock();
        return operation(driver, number);
    }

    /// The first text that a driver has for the code.
    std::string ErrorText(ResultCode code) const {
        std::string text;
        for (const auto& driver : drivers_) {
            text = text.empty() ? driver->ErrorText(code) : text;
        }
        return text;
    }

private:
    struct Device {
        Driver* driver;
        std::uint32_t number = 0;
        DeviceCapabilities capabilities;
    };
    struct Port {
        Driver* driver;
        DeviceHandle inner;
        DriverCallback callback;
        void* instance;
        DeviceHandle outer;
    };

    static void Forward(DeviceHandle /*inner*/, std::uint32_t message, void* instance,
                        std::uintptr_t param1, std::uintptr_t param2) {
        const auto& port = *static_cast<const Port*>(instance);
        port.callback(port.outer, message, port.instance, param1, param2);
    }

    void List() {
        devices_.clear();
        listed_ = true;
        PortNames names;
        for (const auto& driver : drivers_) {
            const std::uint32_t count = driver->DeviceCount();
            for (std::uint32_t number = 0; number < count; ++number) {
                Device device{driver.get(), number, {}};
                if (driver->Capabilities(number, device.capabilities) == kNoError) {
                    device.capabilities.productName = names.Unique(device.capabilities.productName);
                    devices_.push_back(std::move(device));
                }
            }
        }
    }

    const Device* At(std::uint32_t device) {
        if (!listed_) {
            List();
        }
        return device < devices_.size() ? &devices_[device] : nullptr;
    }

    std::vector<std::unique_ptr<Driver>> drivers_;
    std::mutex mutex_;
    bool listed_ = false;
    std::vector<Device> devices_;
    HandleTable<Port> ports_;
};

} // namespace tracksmith::midi
