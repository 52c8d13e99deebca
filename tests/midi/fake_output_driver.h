#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// An output driver that notes its calls and does what a test tells it.
class FakeOutputDriver : public MidiOutputDriver {
public:
    std::vector<DeviceCapabilities> devices{1};
    /// Codes by the name of the call; others succeed.
    std::map<std::string, ResultCode> results;
    std::vector<std::string> calls;
    std::uint32_t volume = 0;
    /// Headers that LongMessage took and Complete has not given back.
    std::vector<MidiHeader*> held;
    std::vector<std::uint8_t> longBytes;
    bool resetGivesBack = false;
    DriverCallback callback = nullptr;
    void* instance = nullptr;

    /// Gives the oldest header back.
    void Complete() {
        MidiHeader* header = held.front();
        held.erase(held.begin());
        callback(kHandle, kOutputDone, instance, reinterpret_cast<std::uintptr_t>(header), 0);
    }

    std::uint32_t DeviceCount() override { return static_cast<std::uint32_t>(devices.size()); }
    ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) override {
        capabilities = devices.at(device);
        return Call("Capabilities", device);
    }
    ResultCode Open(std::uint32_t device, DriverCallback given, void* givenInstance,
                    DeviceHandle& handle) override {
        callback = given;
        instance = givenInstance;
        handle = kHandle;
        return Call("Open", device);
    }
    ResultCode Close(DeviceHandle handle) override { return Call("Close", handle); }
    ResultCode Reset(DeviceHandle handle) override {
        while (resetGivesBack && !held.empty()) {
            Complete();
        }
        return Call("Reset", handle);
    }
    ResultCode ShortMessage(DeviceHandle /*handle*/, std::uint32_t packed) override {
        return Call("ShortMessage", packed);
    }
    ResultCode PrepareHeader(DeviceHandle /*handle*/, MidiHeader& header) override {
        return Call("PrepareHeader", header.bufferLength);
    }
    ResultCode LongMessage(DeviceHandle /*handle*/, MidiHeader& header) override {
        longBytes.assign(header.data, header.data + header.bufferLength);
        const ResultCode result = Call("LongMessage", header.bufferLength);
        if (result == kNoError) {
            held.push_back(&header);
        }
        return result;
    }
    ResultCode UnprepareHeader(DeviceHandle /*handle*/, MidiHeader& header) override {
        return Call("UnprepareHeader", header.bufferLength);
    }
    ResultCode GetVolume(std::uint32_t device, std::uint32_t& told) override {
        told = volume;
        return Call("GetVolume", device);
    }
    ResultCode SetVolume(std::uint32_t device, std::uint32_t set) override {
        volume = set;
        return Call("SetVolume", device);
    }
    ResultCode CachePatches(DeviceHandle /*handle*/, std::uint32_t bank,
                            std::span<const std::uint16_t, 128> patches,
                            std::uint32_t operation) override {
        return Call("CachePatches", bank << 16 | patches[127] << 8 | operation);
    }
    ResultCode CacheDrumPatches(DeviceHandle /*handle*/, std::uint32_t patch,
                                std::span<const std::uint16_t, 128> keys,
                                std::uint32_t operation) override {
        return Call("CacheDrumPatches", patch << 16 | keys[127] << 8 | operation);
    }
    ResultCode Message(DeviceHandle /*handle*/, std::uint32_t message, std::uintptr_t param1,
                       std::uintptr_t param2) override {
        return Call("Message", message + param1 + param2);
    }
    std::string ErrorText(ResultCode code) override {
        return code < 100 ? "system text " + std::to_string(code) : std::string();
    }

    static constexpr DeviceHandle kHandle = 77;

private:
    ResultCode Call(const std::string& name, std::uintptr_t argument) {
        calls.push_back(name + " " + std::to_string(argument));
        const auto found = results.find(name);
        return found != results.end() ? found->second : kNoError;
    }
};

} // namespace tracksmith::midi
