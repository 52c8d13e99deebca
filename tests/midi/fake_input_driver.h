#pragma once

#include <algorithm>
#include <cstring>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::midi {

/// An input driver that notes its calls and delivers what a test tells it.
class FakeInputDriver : public MidiInputDriver {
public:
    std::vector<DeviceCapabilities> devices{1};
    /// Codes by the name of the call; others succeed.
    std::map<std::string, ResultCode> results;
    std::vector<std::string> calls;
    std::deque<MidiHeader*> buffers;
    DriverCallback callback = nullptr;
    void* instance = nullptr;

    void DeliverShort(std::uint32_t packed, std::uint32_t timeMs = 0) {
        callback(kHandle, kInputData, instance, packed, timeMs);
    }
    /// Fills the oldest buffer.
    void DeliverLong(const std::vector<std::uint8_t>& bytes, std::uint32_t message) {
        MidiHeader* header = buffers.front();
        buffers.pop_front();
        std::copy(bytes.begin(), bytes.end(), header->data);
        header->bytesRecorded = static_cast<std::uint32_t>(bytes.size());
        callback(kHandle, message, instance, reinterpret_cast<std::uintptr_t>(header), 5);
    }
    std::ptrdiff_t Count(const std::string& call) const {
        return std::count(calls.begin(), calls.end(), call);
    }

    std::uint32_t DeviceCount() override { return static_cast<std::uint32_t>(devices.size()); }
    ResultCode Capabilities(std::uint32_t device, DeviceCapabilities& capabilities) override {
        capabilities = devices.at(device);
        return Call("Capabilities");
    }
    ResultCode Open(std::uint32_t /*device*/, DriverCallback given, void* givenInstance,
                    DeviceHandle& handle) override {
        callback = given;
        instance = givenInstance;
        handle = kHandle;
        return Call("Open");
    }
    ResultCode Close(DeviceHandle /*handle*/) override { return Call("Close"); }
    ResultCode Reset(DeviceHandle /*handle*/) override {
        buffers.clear();
        return Call("Reset");
    }
    ResultCode PrepareHeader(DeviceHandle /*handle*/, MidiHeader& /*header*/) override {
        return Call("PrepareHeader");
    }
    ResultCode AddBuffer(DeviceHandle /*handle*/, MidiHeader& header) override {
        buffers.push_back(&header);
        return Call("AddBuffer");
    }
    ResultCode UnprepareHeader(DeviceHandle /*handle*/, MidiHeader& /*header*/) override {
        return Call("UnprepareHeader");
    }
    ResultCode Start(DeviceHandle /*handle*/) override { return Call("Start"); }
    ResultCode Stop(DeviceHandle /*handle*/) override { return Call("Stop"); }
    std::string ErrorText(ResultCode code) override {
        return code < 100 ? "system text " + std::to_string(code) : std::string();
    }

    static constexpr DeviceHandle kHandle = 78;

private:
    ResultCode Call(const std::string& name) {
        calls.push_back(name);
        const auto found = results.find(name);
        return found != results.end() ? found->second : kNoError;
    }
};

} // namespace tracksmith::midi
