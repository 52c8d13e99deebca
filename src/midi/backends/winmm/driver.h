#pragma once

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// Outputs of the Windows multimedia system (midiOut* functions). Every call goes straight to the
/// system, and the callback is the system's own: it is called on a thread of the device's driver
/// and also gets the notices of opening and closing (967, 968), which it must ignore.
class WinmmOutputDriver : public MidiOutputDriver {
public:
    std::uint32_t DeviceCount() override;
    /// Wavetable and software synthesizers are told as synthesizers (2).
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
};

/// Inputs of the Windows multimedia system (midiIn* functions), under the same rules; the notices
/// that the callback must ignore are 961, 962, 965 and 972.
class WinmmInputDriver : public MidiInputDriver {
public:
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
};

} // namespace tracksmith::midi
