#include "player/midi_thru.h"

#include "song/midi_event.h"

namespace tracksmith::player {

void MidiThru::Forward(const midi::TMyMidiEvent& event) {
    const auto command = static_cast<std::uint8_t>(event.MidiMessage & 0xF0);
    const std::size_t channel = event.MidiMessage & 0x0F;
    if (event.MidiMessage < song::kNoteOff || event.MidiMessage >= song::kSystemExclusive) {
        return;
    }
    if (command == song::kNoteOn || command == song::kNoteOff) {
        down_[channel][event.Data1 & 0x7F] = command == song::kNoteOn && event.Data2 > 0;
    }
    sender_.SendChannel(channel, command, event.Data1, event.Data2);
}

void MidiThru::ReleaseKeys() {
    constexpr std::uint8_t kReleaseVelocity = 64;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        for (std::size_t key = 0; down_[channel].any() && key < 128; ++key) {
            if (down_[channel][key]) {
                sender_.SendChannel(channel, song::kNoteOff, static_cast<std::uint8_t>(key),
                                    kReleaseVelocity);
                down_[channel][key] = false;
            }
        }
    }
}

} // namespace tracksmith::player
