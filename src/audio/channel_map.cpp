#include "audio/channel_map.h"

#include <utility>

#include "song/midi_numbers.h"

namespace tracksmith::audio {
namespace {

// Banks and kits come in families of eight whose first member stands for the others.
constexpr int FamilyHead(int number) {
    return number & ~7;
}

} // namespace

ChannelMap::ChannelMap(HasPreset hasPreset) : hasPreset_(std::move(hasPreset)) {
    Reset(song::SynthMode::Gm);
}

void ChannelMap::Reset(song::SynthMode mode) {
    mode_ = mode;
    for (std::size_t channel = 0; channel < channels_.size(); ++channel) {
        ChannelState& state = channels_[channel];
        state = {};
        state.voice.drum = channel == song::kDrumChannel;
        state.bankMsb = song::BankMsbAfterReset(mode, state.voice.drum);
        Resolve(state, 0);
    }
}

void ChannelMap::SelectBankMsb(std::uint8_t channel, std::uint8_t value) {
    State(channel).bankMsb = value;
}

void ChannelMap::SelectBankLsb(std::uint8_t channel, std::uint8_t value) {
    State(channel).bankLsb = value;
}

const ChannelVoice& ChannelMap::ChangeProgram(std::uint8_t channel, std::uint8_t program) {
    ChannelState& state = State(channel);
    state.voice.drum = IsDrum(state);
    Resolve(state, program);
    return state.voice;
}

const ChannelVoice& ChannelMap::SetRhythmPart(song::RhythmPart part) {
    ChannelState& state = State(part.channel);
    if (state.voice.drum != part.drum) {
        state.voice.drum = part.drum;
        state.bankMsb = song::BankMsbAfterReset(mode_, part.drum);
        state.bankLsb = 0;
        Resolve(state, 0);
    }
    return state.voice;
}

/// In GM2 and XG the bank select decides, in GM and GS the part keeps what it is.
bool ChannelMap::IsDrum(const ChannelState& state) const {
    if (mode_ == song::SynthMode::Xg) {
        return state.bankMsb == song::kXgDrumBank || state.bankMsb == song::kXgEffectKitBank;
    }
    if (mode_ == song::SynthMode::Gm2 &&
        (state.bankMsb == song::kGm2DrumBank || state.bankMsb == song::kGm2MelodyBank)) {
        return state.bankMsb == song::kGm2DrumBank;
    }
    return state.voice.drum;
}

/// The SoundFont bank that the selected bank means for a melody voice; -1 for a bank that no
/// SoundFont number stands for.
int ChannelMap::MelodyBank(const ChannelState& state) const {
    switch (mode_) {
        case song::SynthMode::Gs:
            return state.bankMsb;
        case song::SynthMode::Gm2:
            return state.bankMsb == song::kGm2MelodyBank ? state.bankLsb : -1;
        case song::SynthMode::Xg:
            if (state.bankMsb == song::kXgEffectVoiceBank) {
                return song::kXgEffectVoiceBank;
            }
            return state.bankMsb == 0 ? state.bankLsb : -1;
        default:
            return 0;
    }
}

/// What is tried in turn; only the first is what the song asked for.
std::vector<ChannelMap::Preset> ChannelMap::Candidates(const ChannelState& state,
                                                       int program) const {
    if (state.voice.drum) {
        const bool effects =
            mode_ == song::SynthMode::Xg && state.bankMsb == song::kXgEffectKitBank;
        return {{effects ? -1 : kDrumBank, program},
                {kDrumBank, program},
                {kDrumBank, FamilyHead(program)},
                {kDrumBank, 0}};
    }
    const int bank = MelodyBank(state);
    std::vector<Preset> list{{bank, program}};
    if (mode_ == song::SynthMode::Gs) {
        list.push_back({FamilyHead(bank), program});
    }
    list.insert(list.end(), {{0, program}, {0, FamilyHead(program)}, {0, 0}});
    return list;
}

void ChannelMap::Resolve(ChannelState& state, int program) {
    const std::vector<Preset> candidates = Candidates(state, program);
    const bool drum = state.voice.drum;
    bool exact = true;
    for (const Preset& preset : candidates) {
        if (preset.bank >= 0 && hasPreset_(preset.bank, preset.program)) {
            state.voice = {preset.bank, preset.program, drum, exact};
            return;
        }
        exact = false;
    }
    state.voice = {drum ? kDrumBank : 0, program, drum, false};
}

} // namespace tracksmith::audio
