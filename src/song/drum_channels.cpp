#include "song/drum_channels.h"

#include "song/mode_message.h"

namespace tracksmith::song {
namespace {

bool IsDrumBank(std::uint8_t msb) {
    return msb == kGm2DrumBank || msb == kXgEffectKitBank || msb == kXgDrumBank;
}

} // namespace

std::bitset<kMidiChannels> DrumChannels(const Song& song) {
    std::bitset<kMidiChannels> drums;
    drums.set(kDrumChannel);
    for (const Track& track : song.tracks) {
        for (ConstEventLink event = track.first; event; event = event->next) {
            if (event->length == 0) {
                continue;
            }
            if (event->Command() == kControlChange && event->data1 == kBankMsb &&
                IsDrumBank(event->data2)) {
                drums.set(event->Channel());
            } else if (event->status == kSystemExclusive) {
                const auto part = RhythmPartOf(WithoutFrame(event->Payload()));
                if (part && part->drum) {
                    drums.set(part->channel);
                }
            }
        }
    }
    return drums;
}

} // namespace tracksmith::song
