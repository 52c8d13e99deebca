#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::test {

/// A message that a device has received, with the time of its stopwatch.
struct Received {
    std::int64_t us;
    std::string device;
    std::vector<std::uint8_t> bytes;
};

/// Output devices that keep what they receive. They can vanish, come back, fail, be slow and hang.
class RecordingDriver final : public midi::MidiOutputDriver {
public:
    struct Device {
        std::string name;
        bool present = true;
        bool nameless = false;
        bool hanging = false;
        midi::ResultCode openResult = midi::kNoError;
        midi::ResultCode sendResult = midi::kNoError;
        int openings = 0;
    };

    explicit RecordingDriver(std::vector<std::string> names = {"Keyboard"}) {
        for (std::string& name : names) {
            devices_.push_back({std::move(name)});
        }
    }

    /// What gives the messages their time.
    std::function<std::int64_t()> clock = [] { return 0; };
    /// Called for every message before it is kept.
    std::function<void()> onMessage;
    /// Long messages do not come back.
    std::atomic<bool> keepsHeaders = false;

    template <typename Change>
    void ChangeDevice(const std::string& name, Change&& change) {
        const std::lock_guard lock(mutex_);
        for (Device& device : devices_) {
            if (device.name == name) {
                change(device);
            }
        }
    }
    void SetPresent(const std::string& name, bool on) {
        ChangeDevice(name, [on](Device& device) { device.present = on; });
    }
    void SetFailing(const std::string& name, bool on) {
        SetSendResult(name, on ? midi::kNoDriver : midi::kNoError);
    }
    /// What every message from now on comes to, and every opening.
    void SetSendResult(const std::string& name, midi::ResultCode result) {
        ChangeDevice(name, [result](Device& device) { device.sendResult = result; });
    }
    void SetOpenResult(const std::string& name, midi::ResultCode result) {
        ChangeDevice(name, [result](Device& device) { device.openResult = result; });
    }
    /// Sending does not return until this is off.
    void SetHanging(const std::string& name, bool on) {
        ChangeDevice(name, [on](Device& device) { device.hanging = on; });
        released_.notify_all();
    }
    /// Waits until so many calls hang.
    void AwaitHanging(int calls) {
        std::unique_lock lock(mutex_);
        released_.wait(lock, [&] { return hanging_ == calls; });
    }
    /// How often the device was opened or tried to.
    int Openings(const std::string& name) {
        int openings = 0;
        ChangeDevice(name, [&](const Device& device) { openings = device.openings; });
        return openings;
    }
    void SetNameless(const std::string& name, bool on) {
        ChangeDevice(name, [on](Device& device) { device.nameless = on; });
    }
    void Rename(const std::string& name, const std::string& newName) {
        ChangeDevice(name, [&](Device& device) { device.name = newName; });
    }
    void Add(const std::string& name) {
        const std::lock_guard lock(mutex_);
        devices_.push_back({name});
    }
    /// Everything received since the last call.
    std::vector<Received> Take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(received_, {});
    }

    std::uint32_t DeviceCount() override {
        const std::lock_guard lock(mutex_);
        return static_cast<std::uint32_t>(Present().size());
    }
    midi::ResultCode Capabilities(std::uint32_t device,
                                  midi::DeviceCapabilities& capabilities) override {
        const std::lock_guard lock(mutex_);
        const std::vector<std::size_t> present = Present();
        if (device >= present.size() || devices_[present[device]].nameless) {
            return midi::kBadDeviceId;
        }
        capabilities.productName = devices_[present[device]].name;
        return midi::kNoError;
    }
    midi::ResultCode Open(std::uint32_t device, midi::DriverCallback callback, void* instance,
                          midi::DeviceHandle& handle) override {
        const std::lock_guard lock(mutex_);
        const std::vector<std::size_t> present = Present();
        if (device >= present.size()) {
            return midi::kBadDeviceId;
        }
        Device& opened = devices_[present[device]];
        ++opened.openings;
        if (opened.openResult != midi::kNoError) {
            return opened.openResult;
        }
        connections_.push_back({present[device], callback, instance});
        handle = connections_.size();
        return midi::kNoError;
    }
    midi::ResultCode Close(midi::DeviceHandle handle) override {
        const std::lock_guard lock(mutex_);
        connections_[handle - 1].callback = nullptr;
        return midi::kNoError;
    }
    midi::ResultCode Reset(midi::DeviceHandle) override { return midi::kNoError; }
    midi::ResultCode ShortMessage(midi::DeviceHandle handle, std::uint32_t packed) override {
        const auto status = static_cast<std::uint8_t>(packed);
        std::vector<std::uint8_t> bytes{status, static_cast<std::uint8_t>(packed >> 8)};
        if ((status & 0xE0) != 0xC0) {
            bytes.push_back(static_cast<std::uint8_t>(packed >> 16));
        }
        return Keep(handle, std::move(bytes));
    }
    midi::ResultCode PrepareHeader(midi::DeviceHandle, midi::MidiHeader& header) override {
        header.flags |= midi::MidiHeader::kPrepared;
        return midi::kNoError;
    }
    midi::ResultCode LongMessage(midi::DeviceHandle handle, midi::MidiHeader& header) override {
        const midi::ResultCode result =
            Keep(handle, {header.data, header.data + header.bufferLength});
        if (result == midi::kNoError && !keepsHeaders) {
            header.flags |= midi::MidiHeader::kDone;
            const Connection& connection = connections_[handle - 1];
            connection.callback(handle, midi::kOutputDone, connection.instance,
                                reinterpret_cast<std::uintptr_t>(&header), 0);
        }
        return result;
    }
    midi::ResultCode UnprepareHeader(midi::DeviceHandle, midi::MidiHeader& header) override {
        header.flags &= ~midi::MidiHeader::kPrepared;
        return midi::kNoError;
    }
    midi::ResultCode GetVolume(std::uint32_t, std::uint32_t&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode SetVolume(std::uint32_t, std::uint32_t) override {
        return midi::kNotSupported;
    }
    midi::ResultCode CachePatches(midi::DeviceHandle, std::uint32_t,
                                  std::span<const std::uint16_t, 128>, std::uint32_t) override {
        return midi::kNotSupported;
    }
    midi::ResultCode CacheDrumPatches(midi::DeviceHandle, std::uint32_t,
                                      std::span<const std::uint16_t, 128>, std::uint32_t) override {
        return midi::kNotSupported;
    }
    midi::ResultCode Message(midi::DeviceHandle, std::uint32_t, std::uintptr_t,
                             std::uintptr_t) override {
        return midi::kNotSupported;
    }
    std::string ErrorText(midi::ResultCode) override { return "device error"; }

private:
    struct Connection {
        std::size_t device;
        midi::DriverCallback callback;
        void* instance;
    };

    std::vector<std::size_t> Present() const {
        std::vector<std::size_t> present;
        for (std::size_t index = 0; index < devices_.size(); ++index) {
            if (devices_[index].present) {
                present.push_back(index);
            }
        }
        return present;
    }
    midi::ResultCode Keep(midi::DeviceHandle handle, std::vector<std::uint8_t> bytes) {
        if (onMessage) {
            onMessage();
        }
        std::unique_lock lock(mutex_);
        const std::size_t index = connections_[handle - 1].device;
        if (devices_[index].hanging) {
            ++hanging_;
            released_.notify_all();
            released_.wait(lock, [&] { return !devices_[index].hanging; });
            --hanging_;
            released_.notify_all();
        }
        const Device& device = devices_[index];
        if (!device.present || connections_[handle - 1].callback == nullptr) {
            return midi::kNoDriver;
        }
        if (device.sendResult != midi::kNoError) {
            return device.sendResult;
        }
        received_.push_back({clock(), device.name, std::move(bytes)});
        return midi::kNoError;
    }

    std::mutex mutex_;
    std::condition_variable released_;
    int hanging_ = 0;
    std::vector<Device> devices_;
    std::vector<Connection> connections_;
    std::vector<Received> received_;
};

} // namespace tracksmith::test
