#include "player/channel_activity.h"

namespace tracksmith::player {

void ChannelActivity::NoteOn(std::size_t channel, std::size_t key, std::uint8_t velocity) {
    std::atomic<std::uint8_t>& held = notes_[channel][key];
    if (held.load() < 0xFF) {
        ++held;
    }
    if (levels_[channel].load() < velocity) {
        levels_[channel].store(velocity);
    }
}

void ChannelActivity::NoteOff(std::size_t channel, std::size_t key) {
    std::atomic<std::uint8_t>& held = notes_[channel][key];
    if (held.load() > 0) {
        --held;
    }
}

void ChannelActivity::LetLevelsFall() {
    for (std::atomic<std::uint8_t>& level : levels_) {
        std::uint8_t now = level.load();
        // A note that begins meanwhile wins.
        level.compare_exchange_strong(now, static_cast<std::uint8_t>(now - (now + 7) / 8));
    }
}

void ChannelActivity::Clear(std::size_t channel) {
    for (std::atomic<std::uint8_t>& held : notes_[channel]) {
        held.store(0);
    }
    levels_[channel].store(0);
}

void ChannelActivity::ClearAll() {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        Clear(channel);
    }
}

} // namespace tracksmith::player
