#include "instruments/sysex/part_voices.h"

namespace tracksmith::instruments {

void PartVoices::Reset(ResetKind kind) {
    kind_ = kind;
    channels_ = {};
    channels_.at(song::kDrumChannel).voice.drum = true;
}

void PartVoices::SetPart(const PartMode& mode) {
    Channel& channel = channels_.at(mode.channel);
    if (Changes(mode)) {
        channel = {.voice = {.drum = mode.drum}, .bank = {}};
    }
    channel.voice.certain = true;
}

DrumWay PartVoices::WayInForce() const {
    if (way_) {
        return *way_;
    }
    switch (kind_) {
        case ResetKind::Xg:
            return DrumWay::BankXg;
        case ResetKind::Gm2:
            return DrumWay::BankGm2;
        default:
            return DrumWay::None;
    }
}

void PartVoices::ChangeProgram(std::size_t channel, std::uint8_t program) {
    auto& [voice, bank] = channels_.at(channel);
    voice.program = program;
    if (!bank) {
        return;
    }
    const DrumWay way = WayInForce();
    if (way == DrumWay::BankXg) {
        voice.drum = *bank >= song::kXgEffectKitBank;
    } else if (way == DrumWay::BankGm2 &&
               (*bank == song::kGm2DrumBank || *bank == song::kGm2MelodyBank)) {
        voice.drum = *bank == song::kGm2DrumBank;
    } else if (!voice.drum && *bank >= song::kGm2DrumBank) {
        voice.certain = kind_ == ResetKind::Gs || kind_ == ResetKind::Gm2;
    }
}

} // namespace tracksmith::instruments
