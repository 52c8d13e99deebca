#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "midi/midi_driver.h"

namespace tracksmith::benchmarks {

using Clock = std::chrono::steady_clock;

/// One device that notes when each message comes; allocates nothing while it receives. One thread
/// sends, another reads.
class TimingDriver final : public midi::MidiOutputDriver {
public:
    /// Takes `most` messages; with `onlyNotes` others are not noted.
    explicit TimingDriver(std::size_t most, bool onlyNotes = false) : onlyNotes_(onlyNotes) {
        times_.resize(most);
    }

    void Restart() { count_ = 0; }
    std::size_t Count() const { return count_; }
    Clock::time_point Time(std::size_t index) const { return times_[index]; }

    std::uint32_t DeviceCount() override { return 1; }
    midi::ResultCode Capabilities(std::uint32_t, midi::DeviceCapabilities& capabilities) override {
        capabilities.productName = "Recorder";
        return midi::kNoError;
    }
    midi::ResultCode Open(std::uint32_t, midi::DriverCallback, void*,
                          midi::DeviceHandle& handle) override {
        handle = 1;
        return midi::kNoError;
    }
    midi::ResultCode Close(midi::DeviceHandle) override { return midi::kNoError; }
    midi::ResultCode Reset(midi::DeviceHandle) override { return midi::kNoError; }
    midi::ResultCode ShortMessage(midi::DeviceHandle, std::uint32_t message) override {
        const std::size_t index = count_;
        const bool note = (message & 0xE0U) == 0x80U;
        if (index < times_.size() && (note || !onlyNotes_)) {
            times_[index] = Clock::now();
            count_ = index + 1;
        }
        return midi::kNoError;
    }
    midi::ResultCode PrepareHeader(midi::DeviceHandle, midi::MidiHeader&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode LongMessage(midi::DeviceHandle, midi::MidiHeader&) override {
        return midi::kNotSupported;
    }
    midi::ResultCode UnprepareHeader(midi::DeviceHandle, midi::MidiHeader&) override {
        return midi::kNotSupported;
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
    std::string ErrorText(midi::ResultCode) override { return {}; }

private:
    bool onlyNotes_;
    std::vector<Clock::time_point> times_;
    std::atomic<std::size_t> count_ = 0;
};

} // namespace tracksmith::benchmarks
