#include "player/channels_in_effect.h"

#include "song/shared_byte.h"

namespace tracksmith::player {

ChannelsInEffect::ChannelsInEffect() {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        PublishAll(channel);
    }
}

ChannelsInEffect::Effect ChannelsInEffect::Read(std::size_t channel, std::size_t place) const {
    const std::uint64_t both = published_[channel][place].load(std::memory_order_relaxed);
    return {static_cast<std::uint16_t>(both >> 32),
            song::EventLink(static_cast<std::uint32_t>(both & 0xFFFF'FFFF))};
}

void ChannelsInEffect::Publish(std::size_t channel, std::size_t place,
                               const song::Setting& setting) noexcept {
    const std::uint64_t both = (std::uint64_t{setting.value} << 32) | setting.event.Unit();
    published_[channel][place].store(both, std::memory_order_relaxed);
}

void ChannelsInEffect::PublishAll(std::size_t channel) noexcept {
    const song::ChannelControls& controls = controls_[channel];
    for (std::size_t controller = 0; controller < song::kControllers; ++controller) {
        Publish(channel, controller, controls.controllers[controller]);
    }
    Publish(channel, kProgram, controls.program);
    Publish(channel, kProgramBankMsb, controls.programBankMsb);
    Publish(channel, kProgramBankLsb, controls.programBankLsb);
    Publish(channel, kBend, controls.bend);
    Publish(channel, kPressure, controls.pressure);
}

void ChannelsInEffect::Take(song::ConstEventLink event) noexcept {
    const std::size_t channel = event->Channel();
    song::ChannelControls& controls = controls_[channel];
    controls.Take(event);
    const std::size_t controller = song::ReadShared(event->data1) & 0x7FU;
    if (event->Command() != song::kControlChange || controller == song::kResetAllControllers) {
        PublishAll(channel);
    } else {
        Publish(channel, controller, controls.controllers[controller]);
    }
}

void ChannelsInEffect::Set(std::size_t channel, const song::ChannelControls& controls) noexcept {
    controls_[channel] = controls;
    PublishAll(channel);
}

} // namespace tracksmith::player
