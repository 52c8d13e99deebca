#include "player/routing.h"

namespace tracksmith::player {

Routing::Routing() {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        routes_[channel].target = static_cast<std::uint8_t>(channel);
    }
}

void Routing::SetRoute(std::size_t channel, const ChannelRoute& route) {
    routes_[channel].port.store(route.port, kRelaxed);
    routes_[channel].target.store(static_cast<std::uint8_t>(route.target & 0x0F), kRelaxed);
}

ChannelRoutes Routing::Routes() const {
    ChannelRoutes routes;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        routes[channel] = {Port(channel), Target(channel)};
    }
    return routes;
}

std::set<std::size_t> Routing::Ports() const {
    std::set<std::size_t> ports;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        ports.insert(Port(channel));
    }
    return ports;
}

bool Routing::Audible(std::size_t channel) const {
    const unsigned solo = solo_.load(kRelaxed);
    return !Muted(channel) && (solo == 0 || (solo & Bit(channel)) != 0);
}

} // namespace tracksmith::player
