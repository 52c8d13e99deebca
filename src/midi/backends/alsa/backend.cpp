#include "midi/backends/alsa/backend.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "midi/backends/alsa/midi_in.h"
#include "midi/backends/alsa/midi_out.h"
#include "midi/backends/alsa/port_names.h"
#include "midi/backends/alsa/sequencer.h"

namespace tracksmith::midi::alsa {
namespace {

constexpr std::uint16_t kMidiPortTechnology = 1;

// Lists the ports of one side through a client that is kept, since making one is slow and seen by
// all other clients.
template <typename Device>
class Lister {
public:
    std::vector<std::string> FullNames() {
        if (device_ == nullptr) {
            device_ = MakeDevice<Device>(
                std::string(kClientName), [](RtMidiError::Type, const std::string&, void*) {},
                nullptr);
        }
        return device_ == nullptr ? std::vector<std::string>() : PortNames(*device_);
    }

private:
    std::unique_ptr<Device> device_;
};

std::vector<DeviceCapabilities> Describe(const std::vector<std::string>& fullNames) {
    std::vector<DeviceCapabilities> ports;
    for (NamedPort& named : NamePorts(fullNames)) {
        DeviceCapabilities& port = ports.emplace_back();
        port.productName = std::move(named.productName);
        port.technology = kMidiPortTechnology;
    }
    return ports;
}

std::string FindFullName(const std::vector<std::string>& fullNames,
                         const std::string& productName) {
    for (const NamedPort& port : NamePorts(fullNames)) {
        if (port.productName == productName) {
            return port.fullName;
        }
    }
    return {};
}

class Backend final : public PortBackend {
public:
    std::vector<DeviceCapabilities> Outputs() override {
        const std::vector<std::string> fullNames = outputs_.FullNames();
        MarkVanished(fullNames);
        return Describe(fullNames);
    }

    std::vector<DeviceCapabilities> Inputs() override { return Describe(inputs_.FullNames()); }

    std::unique_ptr<OutputConnection> OpenOutput(const std::string& productName,
                                                 ResultCode& result) override {
        const std::string fullName = FindFullName(outputs_.FullNames(), productName);
        result = kBadDeviceId;
        if (fullName.empty()) {
            return nullptr;
        }
        auto present = std::make_shared<std::atomic<bool>>(true);
        std::unique_ptr<OutputConnection> out = MidiOut::Open(fullName, present, result);
        if (out != nullptr) {
            open_.push_back({fullName, present});
        }
        return out;
    }

    std::unique_ptr<InputConnection> OpenInput(const std::string& productName,
                                               MessageReceiver receiver,
                                               ResultCode& result) override {
        const std::string fullName = FindFullName(inputs_.FullNames(), productName);
        result = kBadDeviceId;
        return fullName.empty() ? nullptr : MidiIn::Open(fullName, std::move(receiver), result);
    }

private:
    struct OpenPort {
        std::string fullName;
        std::weak_ptr<std::atomic<bool>> present;
    };

    void MarkVanished(const std::vector<std::string>& fullNames) {
        std::erase_if(open_, [](const OpenPort& port) { return port.present.expired(); });
        for (const OpenPort& port : open_) {
            const auto present = port.present.lock();
            if (std::find(fullNames.begin(), fullNames.end(), port.fullName) == fullNames.end()) {
                present->store(false, std::memory_order_relaxed);
            }
        }
    }

    Lister<RtMidiOut> outputs_;
    Lister<RtMidiIn> inputs_;
    std::vector<OpenPort> open_;
};

} // namespace

std::unique_ptr<PortBackend> MakePortBackend() {
    return std::make_unique<Backend>();
}

} // namespace tracksmith::midi::alsa
