#include "midi/backends/jack/backend.h"

#include <utility>

#include "midi/backends/jack/midi_in.h"
#include "midi/backends/jack/midi_out.h"
#include "midi/backends/jack/port_directory.h"

namespace tracksmith::midi::jack {
namespace {

constexpr std::uint16_t kMidiPortTechnology = 1;

class Backend final : public PortBackend {
public:
    std::vector<DeviceCapabilities> Outputs() override { return List(Direction::Out); }
    std::vector<DeviceCapabilities> Inputs() override { return List(Direction::In); }

    std::unique_ptr<OutputConnection> OpenOutput(const std::string& productName,
                                                 ResultCode& result) override {
        const std::string peer = directory_.Find(Direction::Out, productName);
        result = kBadDeviceId;
        return peer.empty() ? nullptr : MidiOut::Open(peer, result);
    }

    std::unique_ptr<InputConnection> OpenInput(const std::string& productName,
                                               MessageReceiver receiver,
                                               ResultCode& result) override {
        const std::string peer = directory_.Find(Direction::In, productName);
        result = kBadDeviceId;
        return peer.empty() ? nullptr : MidiIn::Open(peer, std::move(receiver), result);
    }

private:
    std::vector<DeviceCapabilities> List(Direction direction) {
        std::vector<DeviceCapabilities> ports;
        for (PeerPort& peer : directory_.List(direction)) {
            DeviceCapabilities& port = ports.emplace_back();
            port.productName = std::move(peer.productName);
            port.technology = kMidiPortTechnology;
        }
        return ports;
    }

    PortDirectory directory_;
};

} // namespace

std::unique_ptr<PortBackend> MakePortBackend() {
    // The library tells on standard error of every server that it does not find.
    const auto silent = [](const char*) {};
    jack_set_error_function(silent);
    jack_set_info_function(silent);
    return std::make_unique<Backend>();
}

} // namespace tracksmith::midi::jack
