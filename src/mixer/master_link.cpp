#include "mixer/master_link.h"

#include <algorithm>

namespace tracksmith::mixer {

void MasterLink::Link(std::uint8_t master, const Volumes& volumes) {
    linked_ = true;
    for (std::size_t channel = 0; channel < volumes.size(); ++channel) {
        TakeVolume(channel, master, volumes[channel]);
    }
}

void MasterLink::TakeVolume(std::size_t channel, std::uint8_t master, std::uint8_t volume) {
    references_.at(channel) = {volume, std::max<int>(master, 1)};
}

std::uint8_t MasterLink::VolumeAt(std::size_t channel, std::uint8_t master) const {
    const Reference& reference = references_.at(channel);
    const int rounded = (2 * reference.volume * master + reference.master) / (2 * reference.master);
    return static_cast<std::uint8_t>(std::clamp(rounded, 1, 127));
}

} // namespace tracksmith::mixer
