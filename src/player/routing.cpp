#include "player/routing.h"

namespace tracksmith::player {

Routing::Routing() {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        routes_[channel].target = static_cast<std::uint8_t>(channel);
    }
}

void Routing::SetRoute(std::size_t channel, std::size_t port, std::uint8_t target) {
    routes_[channel].port.store(port, kRelaxed);
    routes_[channel].target.store(static_cast<std::uint8_t>(target & 0x0F), kRelaxed);
}

bool Routing::Audible(std::size_t channel) const {
    const unsigned solo = solo_.load(kRelaxed);
    return !Muted(channel) && (solo == 0 || (solo & Bit(channel)) != 0);
}

} // namespace tracksmith::player
