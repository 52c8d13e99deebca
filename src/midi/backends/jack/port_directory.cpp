#include "midi/backends/jack/port_directory.h"

#include <algorithm>
#include <array>

namespace tracksmith::midi::jack {
namespace {

constexpr std::chrono::seconds kSearchInterval{2};

// Names of hardware ports are mere numbers ("system:midi_playback_1") that change with the order of
// plugging in; their alias names the device.
std::string AliasOf(jack_port_t* port) {
    const auto size = static_cast<std::size_t>(jack_port_name_size());
    std::string first(size + 1, '\0');
    std::string second(size + 1, '\0');
    const std::array<char*, 2> aliases{first.data(), second.data()};
    if (jack_port_get_aliases(port, aliases.data()) < 1) {
        return {};
    }
    first.resize(first.find('\0'));
    return first;
}

std::string ProductName(jack_client_t* client, const std::string& name,
                        const std::vector<PeerPort>& others) {
    jack_port_t* const port = jack_port_by_name(client, name.c_str());
    if (port == nullptr || !name.starts_with("system:")) {
        return name;
    }
    const std::string alias = AliasOf(port);
    const bool taken = std::any_of(others.begin(), others.end(), [&](const PeerPort& other) {
        return other.productName == alias;
    });
    return alias.empty() || taken ? name : alias;
}

} // namespace

bool PortDirectory::HaveServer(bool searchNow) {
    if (client_ != nullptr && !client_->Lost()) {
        return true;
    }
    const auto now = std::chrono::steady_clock::now();
    if (client_ == nullptr && !searchNow && now < nextSearch_) {
        return false;
    }
    client_ = Client::Join(std::string(kClientName) + "-list");
    nextSearch_ = now + kSearchInterval;
    return client_ != nullptr;
}

std::vector<PeerPort> PortDirectory::List(Direction direction, bool searchNow) {
    std::vector<PeerPort> ports;
    if (!HaveServer(searchNow)) {
        return ports;
    }
    const JackPortFlags flags = direction == Direction::Out ? JackPortIsInput : JackPortIsOutput;
    const char** const names =
        jack_get_ports(client_->Handle(), nullptr, JACK_DEFAULT_MIDI_TYPE, flags);
    for (const char** name = names; name != nullptr && *name != nullptr; ++name) {
        if (!IsOwnPort(*name)) {
            ports.push_back({*name, ProductName(client_->Handle(), *name, ports)});
        }
    }
    jack_free(names);
    return ports;
}

std::string PortDirectory::Find(Direction direction, const std::string& productName) {
    for (const PeerPort& port : List(direction, true)) {
        if (port.productName == productName) {
            return port.name;
        }
    }
    return {};
}

} // namespace tracksmith::midi::jack
