#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "player/output_port.h"

namespace tracksmith::player {

/// A driver whose devices the player offers. It must outlive the player.
struct OutputDriver {
    midi::MidiOutputDriver* driver = nullptr;
    /// The driver is the built-in instrument, not hardware.
    bool softwareInstrument = false;
};

/// An output device in the list that the user chooses from.
struct OutputDevice {
    /// Index of its port: the number that routing goes by. Stays the same while the player lives.
    std::size_t port = 0;
    std::string productName;
    /// The device is there and works.
    bool usable = false;
    /// The built-in instrument.
    bool softwareInstrument = false;
    std::uint64_t messagesSent = 0;
    std::uint32_t timesLost = 0;
};

/// All output ports. New devices are added behind the others, none is taken away. Sending is for
/// any thread, the rest for the owner's.
class OutputPorts {
public:
    static constexpr std::size_t kMostPorts = 64;

    /// `onTrouble` is called from any thread when a port has trouble to be told.
    OutputPorts(const Stopwatch& stopwatch, std::function<void()> onTrouble);

    /// Makes a port for every device of the drivers, sorted by product name.
    void Enumerate(std::span<const OutputDriver> drivers);
    /// Devices that the drivers say they have, also those that do not tell their name.
    std::uint32_t DevicesPresent() const;

    std::size_t Count() const { return count_.load(std::memory_order_acquire); }
    OutputPort& At(std::size_t port) const { return *ports_[port]; }
    /// The list of devices, sorted by product name.
    std::vector<OutputDevice> SortedDevices() const;

    /// Opens a port, by its name. True when it is open.
    bool Open(std::size_t port);
    /// Closes a port and opens it again. True when it is open.
    bool Reopen(std::size_t port);
    void CloseAll();

    /// Asks the drivers what is there: ports whose device has gone become lost, new devices get
    /// ports, lost ones whose device is there are opened again. Returns those that are back.
    std::vector<std::size_t> Check();

    /// Sending to a port number that does not exist does nothing.
    bool SendShort(std::size_t port, std::uint8_t status, std::uint8_t data1,
                   std::uint8_t data2) const noexcept;
    bool SendSysex(std::size_t port, std::uint8_t status,
                   std::span<const std::uint8_t> data) const noexcept;
    /// All Sound Off and All Notes Off on all channels of a port.
    void Silence(std::size_t port) const noexcept;

private:
    struct Found {
        const OutputDriver* driver;
        std::uint32_t device;
        std::string name;
        bool taken = false;
    };
    std::vector<Found> FindDevices() const;
    std::vector<const Found*> MatchPorts(std::vector<Found>& found) const;
    void Add(const Found& found);
    bool Reopen(OutputPort& port, std::uint32_t device);

    const Stopwatch& stopwatch_;
    std::function<void()> onTrouble_;
    std::vector<OutputDriver> drivers_;
    // Never moves, so that the playback thread may read while a port is added.
    std::array<std::unique_ptr<OutputPort>, kMostPorts> ports_;
    std::atomic<std::size_t> count_ = 0;
};

} // namespace tracksmith::player
