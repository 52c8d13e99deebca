#include "midi/driver_set.h"

#include <utility>

namespace tracksmith::midi {

MidiOutputDriverSet::MidiOutputDriverSet(std::vector<std::unique_ptr<MidiOutputDriver>> drivers)
    : drivers_(std::move(drivers)) {}

std::uint32_t MidiOutputDriverSet::DeviceCount() {
    return drivers_.Count();
}

ResultCode MidiOutputDriverSet::Capabilities(std::uint32_t device,
                                             DeviceCapabilities& capabilities) {
    return drivers_.Capabilities(device, capabilities);
}

ResultCode MidiOutputDriverSet::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                     DeviceHandle& handle) {
    return drivers_.Open(device, callback, instance, handle);
}

ResultCode MidiOutputDriverSet::Close(DeviceHandle handle) {
    return drivers_.Close(handle);
}

ResultCode MidiOutputDriverSet::Reset(DeviceHandle handle) {
    return drivers_.With(
        handle, [&](MidiOutputDriver& driver, DeviceHandle inner) { return driver.Reset(inner); });
}

ResultCode MidiOutputDriverSet::ShortMessage(DeviceHandle handle, std::uint32_t packed) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.ShortMessage(inner, packed);
    });
}

ResultCode MidiOutputDriverSet::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.PrepareHeader(inner, header);
    });
}

ResultCode MidiOutputDriverSet::LongMessage(DeviceHandle handle, MidiHeader& header) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.LongMessage(inner, header);
    });
}

ResultCode MidiOutputDriverSet::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.UnprepareHeader(inner, header);
    });
}

ResultCode MidiOutputDriverSet::GetVolume(std::uint32_t device, std::uint32_t& volume) {
    return drivers_.WithDevice(device, [&](MidiOutputDriver& driver, std::uint32_t number) {
        return driver.GetVolume(number, volume);
    });
}

ResultCode MidiOutputDriverSet::SetVolume(std::uint32_t device, std::uint32_t volume) {
    return drivers_.WithDevice(device, [&](MidiOutputDriver& driver, std::uint32_t number) {
        return driver.SetVolume(number, volume);
    });
}

ResultCode MidiOutputDriverSet::CachePatches(DeviceHandle handle, std::uint32_t bank,
                                             std::span<const std::uint16_t, 128> patches,
                                             std::uint32_t operation) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.CachePatches(inner, bank, patches, operation);
    });
}

ResultCode MidiOutputDriverSet::CacheDrumPatches(DeviceHandle handle, std::uint32_t patch,
                                                 std::span<const std::uint16_t, 128> keys,
                                                 std::uint32_t operation) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.CacheDrumPatches(inner, patch, keys, operation);
    });
}

ResultCode MidiOutputDriverSet::Message(DeviceHandle handle, std::uint32_t message,
                                        std::uintptr_t param1, std::uintptr_t param2) {
    return drivers_.With(handle, [&](MidiOutputDriver& driver, DeviceHandle inner) {
        return driver.Message(inner, message, param1, param2);
    });
}

std::string MidiOutputDriverSet::ErrorText(ResultCode code) {
    return drivers_.ErrorText(code);
}

MidiInputDriverSet::MidiInputDriverSet(std::vector<std::unique_ptr<MidiInputDriver>> drivers)
    : drivers_(std::move(drivers)) {}

std::uint32_t MidiInputDriverSet::DeviceCount() {
    return drivers_.Count();
}

ResultCode MidiInputDriverSet::Capabilities(std::uint32_t device,
                                            DeviceCapabilities& capabilities) {
    return drivers_.Capabilities(device, capabilities);
}

ResultCode MidiInputDriverSet::Open(std::uint32_t device, DriverCallback callback, void* instance,
                                    DeviceHandle& handle) {
    return drivers_.Open(device, callback, instance, handle);
}

ResultCode MidiInputDriverSet::Close(DeviceHandle handle) {
    return drivers_.Close(handle);
}

ResultCode MidiInputDriverSet::Reset(DeviceHandle handle) {
    return drivers_.With(
        handle, [&](MidiInputDriver& driver, DeviceHandle inner) { return driver.Reset(inner); });
}

ResultCode MidiInputDriverSet::PrepareHeader(DeviceHandle handle, MidiHeader& header) {
    return drivers_.With(handle, [&](MidiInputDriver& driver, DeviceHandle inner) {
        return driver.PrepareHeader(inner, header);
    });
}

ResultCode MidiInputDriverSet::AddBuffer(DeviceHandle handle, MidiHeader& header) {
    return drivers_.With(handle, [&](MidiInputDriver& driver, DeviceHandle inner) {
        return driver.AddBuffer(inner, header);
    });
}

ResultCode MidiInputDriverSet::UnprepareHeader(DeviceHandle handle, MidiHeader& header) {
    return drivers_.With(handle, [&](MidiInputDriver& driver, DeviceHandle inner) {
        return driver.UnprepareHeader(inner, header);
    });
}

ResultCode MidiInputDriverSet::Start(DeviceHandle handle) {
    return drivers_.With(
        handle, [&](MidiInputDriver& driver, DeviceHandle inner) { return driver.Start(inner); });
}

ResultCode MidiInputDriverSet::Stop(DeviceHandle handle) {
    return drivers_.With(
        handle, [&](MidiInputDriver& driver, DeviceHandle inner) { return driver.Stop(inner); });
}

std::string MidiInputDriverSet::ErrorText(ResultCode code) {
    return drivers_.ErrorText(code);
}

} // namespace tracksmith::midi
