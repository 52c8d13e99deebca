#pragma once

#include <array>
#include <atomic>
#include <bitset>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "player/output_port.h"

namespace tracksmith::player {

/// An output device in the list that the user chooses from.
struct OutputDevice {
    /// Index of its port: the number that routing goes by. Stays the same while the player lives.
    std::size_t port = 0;
    std::string productName;
    PortState state = PortState::Closed;
    /// The device is there and works, as far as is known.
    bool usable = false;
    /// The built-in instrument.
    bool softwareInstrument = false;
    /// It sounds by itself, as the synthesizer does that Windows has.
    bool synthesizer = false;
    std::uint64_t messagesSent = 0;
    std::uint32_t timesLost = 0;
};

/// A set of ports, by their indexes.
using PortSet = std::bitset<64>;

/// All output ports. New devices are added behind the others, none is taken away. Sending is for
/// any thread, the rest for the owner's.
class OutputPorts {
public:
    static constexpr std::size_t kMostPorts = PortSet().size();

    /// `onTrouble` is called from any thread when a port has trouble to be told.
    OutputPorts(std::shared_ptr<const Stopwatch> stopwatch, std::function<void()> onTrouble);
    OutputPorts(const OutputPorts&) = delete;
    OutputPorts& operator=(const OutputPorts&) = delete;
    ~OutputPorts();

    /// Makes a port for every device of the drivers, sorted by product name.
    void Enumerate(std::span<const OutputDriver> drivers);
    /// Devices that the drivers say they have, also those that do not tell their name.
    std::uint32_t DevicesPresent() const;

    std::size_t Count() const { return count_.load(std::memory_order_acquire); }
    OutputPort& At(std::size_t port) const { return *ports_[port]; }
    /// The list of devices, sorted by product name.
    std::vector<OutputDevice> SortedDevices() const;

    /// Opens a port, by its name. The code is kNoError when it is open, also when it is lost;
    /// kNoDevice when its device is not there; kNotReady when it may be open a little later.
    midi::ResultCode Open(std::size_t port);
    /// Closes a port and opens it again. False when it is not open by now; Check tries again.
    bool Reopen(std::size_t port);
    /// Closes all ports when they have sent what they were given; waits for a second at most.
    void CloseAll();

    /// What Check has found.
    struct Changes {
        /// Ports that are open now and were not, or were lost.
        std::vector<std::size_t> back;
        /// Wanted ports that could not be opened, and why.
        std::vector<std::pair<std::size_t, midi::ResultCode>> notOpened;
    };
    /// Asks the drivers what is there: ports whose device has gone become lost, new devices get
    /// ports. Opens ports again: lost ones whose device is there, and those of `wanted` that could
    /// not be opened before.
    Changes Check(const std::set<std::size_t>& wanted);

    /// Sending to a port number that does not exist does nothing. Without a pass the message is
    /// left to the port's thread; false when the port does not take it.
    bool SendShort(std::size_t port, std::uint8_t status, std::uint8_t data1,
                   std::uint8_t data2) const noexcept;
    bool SendSysex(std::size_t port, std::uint8_t status,
                   std::span<const std::uint8_t> data) const noexcept;
    /// The same for a pass. False when the pass was given up meanwhile.
    [[nodiscard]] bool SendShortNow(std::size_t port, std::uint8_t status, std::uint8_t data1,
                                    std::uint8_t data2, PassState& pass) const noexcept;
    [[nodiscard]] bool SendSysexNow(std::size_t port, std::uint8_t status,
                                    std::span<const std::uint8_t> data,
                                    PassState& pass) const noexcept;
    /// Waits until the ports have sent all that they were given. False when they have not within
    /// `patience`.
    bool WaitUntilSent(std::chrono::milliseconds patience) const noexcept;
    /// The port in whose driver a pass is; none when it is in none.
    std::optional<std::size_t> HoldingPort() const;
    /// All Sound Off and All Notes Off on all channels of a port.
    void Silence(std::size_t port) const noexcept;

private:
    using Deadline = std::chrono::steady_clock::time_point;
    struct Found {
        const OutputDriver* driver;
        std::uint32_t device;
        std::string name;
        bool synthesizer = false;
        bool taken = false;
    };
    std::vector<Found> FindDevices() const;
    std::vector<const Found*> MatchPorts(std::vector<Found>& found) const;
    void Add(const Found& found);
    midi::ResultCode CheckOne(OutputPort& port, const Found* match, bool wanted, Deadline closed);

    std::shared_ptr<const Stopwatch> stopwatch_;
    std::function<void()> onTrouble_;
    std::vector<OutputDriver> drivers_;
    // Never moves, so that the playback thread may read while a port is added.
    std::array<std::unique_ptr<OutputPort>, kMostPorts> ports_;
    std::atomic<std::size_t> count_ = 0;
    PortSet synthesizers_;
};

} // namespace tracksmith::player
