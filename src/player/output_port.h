#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "midi/midi_output.h"
#include "player/stopwatch.h"

namespace tracksmith::player {

/// One output device as the player uses it. Sending never throws and never waits for long: a port
/// that fails or is slow is marked lost and skipped until it is opened again. Sending is for any
/// thread; everything else is for the thread that made the port.
class OutputPort {
public:
    /// A send that takes longer is taken for a dead port (microseconds).
    static constexpr std::int64_t kMostSendUs = 50'000;
    /// Longest system-exclusive message with its status byte.
    static constexpr std::size_t kMostSysex = 65'535;

    /// `onTrouble` is called from any thread when there is trouble to be told; must not block.
    OutputPort(midi::MidiOutputDriver& driver, std::string productName, bool softwareInstrument,
               const Stopwatch& stopwatch, std::function<void()> onTrouble);

    /// Opens the device with this number at the driver. True when the port is open afterwards.
    bool Open(std::uint32_t device) noexcept;
    /// Closes the port; false when a send is stuck in it.
    bool Close() noexcept;

    /// Sends a channel message. False when the port is not open or lost.
    bool SendShort(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept;
    /// Sends `status` and `data` as one message. False also for more than kMostSysex bytes.
    bool SendSysex(std::uint8_t status, std::span<const std::uint8_t> data) noexcept;

    bool IsOpen() const { return open_.load(); }
    /// The port failed and has not been opened again since.
    bool Lost() const { return lost_.load(); }
    /// Marks the port lost, as for a device that has gone.
    void MarkLost() noexcept;

    /// Trouble since the last call that has not been told yet.
    struct Trouble {
        bool lost = false;
        bool sysexTooLong = false;
    };
    Trouble TakeTrouble();

    midi::MidiOutputDriver& Driver() const { return driver_; }
    const std::string& ProductName() const { return productName_; }
    bool SoftwareInstrument() const { return softwareInstrument_; }
    /// Whether the driver listed the device when it was last asked.
    bool Present() const { return present_; }
    void SetPresent(bool present);
    std::uint64_t MessagesSent() const { return sent_.load(std::memory_order_relaxed); }
    std::uint32_t TimesLost() const { return timesLost_.load(std::memory_order_relaxed); }

private:
    template <typename Put>
    bool Send(std::int64_t mostUs, Put&& put) noexcept;
    bool Lock() noexcept;

    midi::MidiOutputDriver& driver_;
    midi::TMidiOutput output_;
    const std::string productName_;
    const bool softwareInstrument_;
    const Stopwatch& stopwatch_;
    const std::function<void()> onTrouble_;
    std::mutex mutex_; // one send at a time, and none while opening or closing
    std::vector<std::uint8_t> sysex_;
    bool present_ = true;
    bool lossMayBeTold_ = true;
    std::atomic<bool> open_ = false;
    std::atomic<bool> lost_ = false;
    std::atomic<bool> lossUntold_ = false;
    std::atomic<bool> sysexUntold_ = false;
    std::atomic<bool> sysexTold_ = false;
    std::atomic<std::uint64_t> sent_ = 0;
    std::atomic<std::uint32_t> timesLost_ = 0;
};

} // namespace tracksmith::player
