#pragma once

#include <memory>
#include <vector>

#include "midi/driver_union.h"
#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// Several output drivers as one: the devices of the first come first. A product name that is there
/// already gets " (2)", " (3)" and so on.
class MidiOutputDriverSet : public MidiOutputDriver {
public:
    explicit MidiOutputDriverSet(std::vector<std::unique_ptr<MidiOutputDriver>> drivers);

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

private:
    DriverUnion<MidiOutputDriver> drivers_;
};

/// Several input drivers as one, under the same rules.
class MidiInputDriverSet : public MidiInputDriver {
public:
    explicit MidiInputDriverSet(std::vector<std::unique_ptr<MidiInputDriver>> drivers);

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
    DriverUnion<MidiInputDriver> drivers_;
};

} // namespace tracksmith::midi
