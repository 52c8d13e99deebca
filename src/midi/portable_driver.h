#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "midi/midi_driver.h"
#include "midi/port_backend.h"
#include "midi/portable_driver_ports.h"

namespace tracksmith::midi {

/// Turns the outputs of a PortBackend into a driver. Messages go out inside ShortMessage and
/// LongMessage, so a header is back before LongMessage returns. The volume of a device is
/// remembered by name and set again when the device is opened.
class PortableOutputDriver : public MidiOutputDriver {
public:
    explicit PortableOutputDriver(std::shared_ptr<PortBackend> backend);
    ~PortableOutputDriver() override;

    std::uint32_t DeviceCount() override;
    ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) override;
    ResultCode Open(std::uint32_t device, DriverCallback callback, void* instance,
                    DeviceHandle& handle) override;
    ResultCode Close(DeviceHandle handle) override;
    ResultCode Reset(DeviceHandle handle) override;
    ResultCode ShortMessage(DeviceHandle handle, std::uint32_t packed) override;
    ResultCode PrepareHeader(DeviceHandle handle, MidiHeader& header) override;
    ResultCode LongMessage(DeviceHandle handle, MidiHeader& header) override;
    ResultCode UnprepareHeader(DeviceHandle handle, MidiHeader& header) override;
    ResultCode GetVolume(std::uint32_t device, std::uint32_t& volume) override;
    ResultCode SetVolume(std::uint32_t device, std::uint32_t volume) override;
    ResultCode CachePatches(DeviceHandle handle, std::uint32_t bank,
                            std::span<const std::uint16_t, 128> patches,
                            std::uint32_t operation) override;
    ResultCode CacheDrumPatches(DeviceHandle handle, std::uint32_t patch,
                                std::span<const std::uint16_t, 128> keys,
                                std::uint32_t operation) override;
    ResultCode Message(DeviceHandle handle, std::uint32_t message, std::uintptr_t param1,
                       std::uintptr_t param2) override;
    std::string ErrorText(ResultCode code) override;

protected:
    /// Whether headers that have been sent stay with the driver, even over Reset, until
    /// GiveBackHeaders. From any thread.
    virtual bool HoldsHeaders() const { return false; }
    /// Gives back all headers that were held.
    void GiveBackHeaders();

private:
    struct Port;

    /// The name of a device that has a volume.
    ResultCode NameForVolume(std::uint32_t device, std::string& name);
    void RestoreVolume(const std::string& name, OutputConnection& connection);

    std::shared_ptr<PortBackend> backend_;
    PortableDriverPorts<Port> ports_;
    std::mutex volumeMutex_;
    std::map<std::string, std::uint32_t> volumes_;
};

} // namespace tracksmith::midi
