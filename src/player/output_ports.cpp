#include "player/output_ports.h"

#include <algorithm>
#include <utility>

#include "midi/port_name.h"
#include "player/routing.h"
#include "song/midi_event.h"

namespace tracksmith::player {

OutputPorts::OutputPorts(const Stopwatch& stopwatch, std::function<void()> onTrouble)
    : stopwatch_(stopwatch), onTrouble_(std::move(onTrouble)) {}

std::vector<OutputPorts::Found> OutputPorts::FindDevices() const {
    std::vector<Found> found;
    for (const OutputDriver& entry : drivers_) {
        const std::uint32_t count = entry.driver->DeviceCount();
        for (std::uint32_t device = 0; device < count; ++device) {
            midi::DeviceCapabilities capabilities;
            if (entry.driver->Capabilities(device, capabilities) == midi::kNoError) {
                found.push_back({&entry, device, std::move(capabilities.productName)});
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
            std::make_unique<OutputPort>(*found.driver->driver, found.name,
                                         found.driver->softwareInstrument, stopwatch_, onTrouble_);
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
        devices.push_back({index, port.ProductName(), port.Present() && !port.Lost(),
                           port.SoftwareInstrument(), port.MessagesSent(), port.TimesLost()});
    }
    std::stable_sort(
        devices.begin(), devices.end(),
        [](const OutputDevice& a, const OutputDevice& b) { return a.productName < b.productName; });
    return devices;
}

bool OutputPorts::Open(std::size_t port) {
    if (port >= Count()) {
        return false;
    }
    if (At(port).IsOpen()) {
        return !At(port).Lost();
    }
    std::vector<Found> found = FindDevices();
    const Found* match = MatchPorts(found)[port];
    return match != nullptr && At(port).Open(match->device);
}

bool OutputPorts::Reopen(std::size_t port) {
    return port < Count() && At(port).Close() && Open(port);
}

void OutputPorts::CloseAll() {
    for (std::size_t index = 0; index < Count(); ++index) {
        At(index).Close();
    }
}

bool OutputPorts::Reopen(OutputPort& port, std::uint32_t device) {
    return port.Close() && port.Open(device);
}

std::vector<std::size_t> OutputPorts::Check() {
    std::vector<Found> found = FindDevices();
    const std::vector<const Found*> matches = MatchPorts(found);
    std::vector<std::size_t> back;
    for (std::size_t index = 0; index < matches.size(); ++index) {
        OutputPort& port = At(index);
        const Found* match = matches[index];
        port.SetPresent(match != nullptr);
        if (match == nullptr && port.IsOpen()) {
            port.MarkLost();
        } else if (match != nullptr && port.Lost() && Reopen(port, match->device)) {
            back.push_back(index);
        }
    }
    for (const Found& device : found) {
        if (!device.taken) {
            Add(device);
        }
    }
    return back;
}

bool OutputPorts::SendShort(std::size_t port, std::uint8_t status, std::uint8_t data1,
                            std::uint8_t data2) const noexcept {
    return port < Count() && At(port).SendShort(status, data1, data2);
}

bool OutputPorts::SendSysex(std::size_t port, std::uint8_t status,
                            std::span<const std::uint8_t> data) const noexcept {
    return port < Count() && At(port).SendSysex(status, data);
}

void OutputPorts::Silence(std::size_t port) const noexcept {
    for (unsigned channel = 0; channel < kChannels; ++channel) {
        const auto status = static_cast<std::uint8_t>(song::kControlChange | channel);
        SendShort(port, status, song::kAllSoundOff, 0);
        SendShort(port, status, song::kAllNotesOff, 0);
    }
}

} // namespace tracksmith::player
