#include "player/output_ports.h"

#include <algorithm>
#include <utility>

#include "midi/port_name.h"
#include "player/routing.h"
#include "song/midi_event.h"

namespace tracksmith::player {
namespace {

// Longest wait for ports that are closed to be opened again, and at the end for their last messages
// and for their closing.
constexpr std::chrono::milliseconds kClosePatience{80};
constexpr std::chrono::milliseconds kLastSends{200};
constexpr std::chrono::milliseconds kEndPatience{800};

// See DeviceCapabilities::technology.
constexpr std::uint16_t kSynthesizer = 2;

std::chrono::milliseconds Left(std::chrono::steady_clock::time_point deadline) {
    using std::chrono::milliseconds;
    const auto left = deadline - std::chrono::steady_clock::now();
    return std::max(std::chrono::duration_cast<milliseconds>(left), milliseconds(0));
}

} // namespace

OutputPorts::OutputPorts(std::shared_ptr<const Stopwatch> stopwatch,
                         std::function<void()> onTrouble)
    : stopwatch_(std::move(stopwatch)), onTrouble_(std::move(onTrouble)) {}

OutputPorts::~OutputPorts() {
    for (std::size_t index = 0; index < Count(); ++index) {
        OutputPort::Dispose(std::move(ports_[index]));
    }
}

std::vector<OutputPorts::Found> OutputPorts::FindDevices() const {
    std::vector<Found> found;
    for (const OutputDriver& entry : drivers_) {
        const std::uint32_t count = entry.driver->DeviceCount();
        for (std::uint32_t device = 0; device < count; ++device) {
            midi::DeviceCapabilities capabilities;
            if (entry.driver->Capabilities(device, capabilities) == midi::kNoError) {
                found.push_back({&entry, device, std::move(capabilities.productName),
                                 capabilities.technology == kSynthesizer});
            }
        }
    }
    return found;
}

// The device of each port, null for none: those of exactly its name go first, so that one of two
// like devices is not taken for the other when it goes.
std::vector<const OutputPorts::Found*> OutputPorts::MatchPorts(std::vector<Found>& found) const {
    std::vector<const Found*> matches(Count());
    for (const bool exact : {true, false}) {
        for (std::size_t index = 0; index < matches.size(); ++index) {
            const OutputPort& port = At(index);
            const auto fits = [&](const Found& device) {
                return !device.taken && device.driver->driver == &port.Driver() &&
                       (exact ? device.name == port.ProductName()
                              : midi::NormalisedPortName(device.name) ==
                                    midi::NormalisedPortName(port.ProductName()));
            };
            const auto match = std::find_if(found.begin(), found.end(), fits);
            if (matches[index] == nullptr && match != found.end()) {
                match->taken = true;
                matches[index] = &*match;
            }
        }
    }
    return matches;
}

void OutputPorts::Add(const Found& found) {
    const std::size_t count = Count();
    if (count < kMostPorts) {
        ports_[count] =
            std::make_unique<OutputPort>(*found.driver, found.name, stopwatch_, onTrouble_);
        synthesizers_[count] = found.synthesizer;
        count_.store(count + 1, std::memory_order_release);
    }
}

void OutputPorts::Enumerate(std::span<const OutputDriver> drivers) {
    drivers_.assign(drivers.begin(), drivers.end());
    std::vector<Found> found = FindDevices();
    std::stable_sort(found.begin(), found.end(),
                     [](const Found& a, const Found& b) { return a.name < b.name; });
    for (const Found& device : found) {
        Add(device);
    }
}

std::uint32_t OutputPorts::DevicesPresent() const {
    std::uint32_t count = 0;
    for (const OutputDriver& entry : drivers_) {
        count += entry.driver->DeviceCount();
    }
    return count;
}

std::vector<OutputDevice> OutputPorts::SortedDevices() const {
    std::vector<OutputDevice> devices;
    for (std::size_t index = 0; index < Count(); ++index) {
        const OutputPort& port = At(index);
        const PortState state = port.State();
        devices.push_back({index, port.ProductName(), state,
                           state == PortState::Open || state == PortState::Closed,
                           port.SoftwareInstrument(), synthesizers_[index], port.MessagesSent(),
                           port.TimesLost()});
    }
    std::stable_sort(
        devices.begin(), devices.end(),
        [](const OutputDevice& a, const OutputDevice& b) { return a.productName < b.productName; });
    return devices;
}

midi::ResultCode OutputPorts::Open(std::size_t port) {
    if (port >= Count()) {
        return midi::kBadDeviceId;
    }
    if (At(port).IsOpen()) {
        return midi::kNoError;
    }
    std::vector<Found> found = FindDevices();
    if (const Found* match = MatchPorts(found)[port]) {
        return At(port).Open(match->device);
    }
    At(port).MarkNotOpened();
    return midi::kNoDevice;
}

bool OutputPorts::Reopen(std::size_t port) {
    if (port >= Count()) {
        return false;
    }
    if (!At(port).Close(kClosePatience)) {
        At(port).MarkNotOpened();
        return false;
    }
    return Open(port) == midi::kNoError;
}

void OutputPorts::CloseAll() {
    WaitUntilSent(kLastSends);
    const Deadline deadline = std::chrono::steady_clock::now() + kEndPatience;
    // All at once, then one after the other has ended.
    for (const bool wait : {false, true}) {
        for (std::size_t index = 0; index < Count(); ++index) {
            At(index).Close(wait ? Left(deadline) : std::chrono::milliseconds(0));
        }
    }
}

OutputPorts::Changes OutputPorts::Check(const std::set<std::size_t>& wanted) {
    std::vector<Found> found = FindDevices();
    const std::vector<const Found*> matches = MatchPorts(found);
    // For all ports together, since somebody waits.
    const Deadline closed = std::chrono::steady_clock::now() + kClosePatience;
    Changes changes;
    for (std::size_t index = 0; index < matches.size(); ++index) {
        OutputPort& port = At(index);
        const bool worked = port.IsOpen() && !port.Lost();
        const midi::ResultCode result =
            CheckOne(port, matches[index], wanted.contains(index), closed);
        if (!worked && port.IsOpen() && !port.Lost()) {
            changes.back.push_back(index);
        } else if (!port.Lost() && result != midi::kNoError && result != midi::kNotReady) {
            changes.notOpened.emplace_back(index, result);
        }
    }
    for (const Found& device : found) {
        if (!device.taken) {
            Add(device);
        }
    }
    return changes;
}

// The code is that of an attempt to open the port.
midi::ResultCode OutputPorts::CheckOne(OutputPort& port, const Found* match, bool wanted,
                                       Deadline closed) {
    port.SetPresent(match != nullptr);
    const bool fails = port.Hanging() || (match == nullptr && port.IsOpen());
    if (fails) {
        port.MarkLost();
        return midi::kNoError;
    }
    const bool missed = port.NotOpened() && wanted;
    if (!port.Lost() && !missed) {
        return midi::kNoError;
    }
    if (match == nullptr) {
        return missed ? midi::kNoDevice : midi::kNoError;
    }
    return port.Close(Left(closed)) ? port.Open(match->device) : midi::kNotReady;
}

bool OutputPorts::SendShort(std::size_t port, std::uint8_t status, std::uint8_t data1,
                            std::uint8_t data2) const noexcept {
    return port < Count() && At(port).SendShort(status, data1, data2);
}

bool OutputPorts::SendSysex(std::size_t port, std::uint8_t status,
                            std::span<const std::uint8_t> data) const noexcept {
    return port < Count() && At(port).SendSysex(status, data);
}

bool OutputPorts::SendShortNow(std::size_t port, std::uint8_t status, std::uint8_t data1,
                               std::uint8_t data2, PassState& pass) const noexcept {
    return port >= Count() || At(port).SendShortNow(status, data1, data2, pass);
}

bool OutputPorts::SendSysexNow(std::size_t port, std::uint8_t status,
                               std::span<const std::uint8_t> data, PassState& pass) const noexcept {
    return port >= Count() || At(port).SendSysexNow(status, data, pass);
}

bool OutputPorts::WaitUntilSent(std::chrono::milliseconds patience) const noexcept {
    const Deadline deadline = std::chrono::steady_clock::now() + patience;
    bool sent = true;
    for (std::size_t index = 0; index < Count(); ++index) {
        sent = At(index).WaitUntilSent(deadline) && sent;
    }
    return sent;
}

std::optional<std::size_t> OutputPorts::HoldingPort() const {
    for (std::size_t index = 0; index < Count(); ++index) {
        if (At(index).HoldsPass()) {
            return index;
        }
    }
    return std::nullopt;
}

void OutputPorts::Silence(std::size_t port) const noexcept {
    for (unsigned channel = 0; channel < kChannels; ++channel) {
        const auto status = static_cast<std::uint8_t>(song::kControlChange | channel);
        SendShort(port, status, song::kAllSoundOff, 0);
        SendShort(port, status, song::kAllNotesOff, 0);
    }
}

} // namespace tracksmith::player
