#pragma once

#include <memory>

#include "midi/midi_driver.h"
#include "midi/port_backend.h"
#include "midi/portable_driver_ports.h"

namespace tracksmith::midi {

/// Turns the inputs of a PortBackend into a driver. A message of more than three bytes or that
/// begins with F0 or F7 fills lent buffers, several when it is longer than one; the last is told
/// with kInputLongError when the buffers did not suffice or the message has no end (F7). Without a
/// buffer such a message is lost.
class PortableInputDriver : public MidiInputDriver {
public:
    explicit PortableInputDriver(std::shared_ptr<PortBackend> backend);
    ~PortableInputDriver() override;

    std::uint32_t DeviceCount() override;
    ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) override;
    ResultCode Open(std::uint32_t device, DriverCallback callback, void* instance,
                    DeviceHandle& handle) override;
    ResultCode Close(DeviceHandle handle) override;
    ResultCode Reset(DeviceHandle handle) override;
    ResultCode PrepareHeader(DeviceHandle handle, MidiHeader& header) override;
    ResultCode AddBuffer(DeviceHandle handle, MidiHeader& header) override;
    ResultCode UnprepareHeader(DeviceHandle handle, MidiHeader& header) override;
    ResultCode Start(DeviceHandle handle) override;
    ResultCode Stop(DeviceHandle handle) override;
    std::string ErrorText(ResultCode code) override;

private:
    struct Port;

    std::shared_ptr<PortBackend> backend_;
    PortableDriverPorts<Port> ports_;
};

} // namespace tracksmith::midi
