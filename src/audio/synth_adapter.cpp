#include "audio/synth_adapter.h"

#include "song/midi_numbers.h"

namespace tracksmith::audio {

SynthAdapter::SynthAdapter(SoftSynth& synth)
    : synth_(synth),
      map_([&synth](int bank, int program) { return synth.HasPreset(bank, program); }) {
    Reset(song::SynthMode::Gm);
}

void SynthAdapter::SendShort(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) {
    const auto channel = static_cast<std::uint8_t>(status & 0x0F);
    const auto first = static_cast<std::uint8_t>(data1 & 0x7F);
    const auto second = static_cast<std::uint8_t>(data2 & 0x7F);
    fluid_synth_t* synth = synth_.Get();
    switch (status & 0xF0) {
        case 0x80:
            fluid_synth_noteoff(synth, channel, first);
            break;
        case 0x90:
            fluid_synth_noteon(synth, channel, first, second);
            break;
        case 0xA0:
            fluid_synth_key_pressure(synth, channel, first, second);
            break;
        case 0xB0:
            SendController(channel, first, second);
            break;
        case 0xC0:
            map_.ChangeProgram(channel, first);
            Apply(channel);
            break;
        case 0xD0:
            fluid_synth_channel_pressure(synth, channel, first);
            break;
        case 0xE0:
            fluid_synth_pitch_bend(synth, channel, first | (second << 7));
            break;
        default:
            break;
    }
}

void SynthAdapter::SendController(std::uint8_t channel, std::uint8_t number, std::uint8_t value) {
    if (number == song::kBankMsb) {
        map_.SelectBankMsb(channel, value);
    } else if (number == song::kBankLsb) {
        map_.SelectBankLsb(channel, value);
    } else if (number >= song::kOmniOff) {
        // The synthesizer would regroup its channels; on a multi-part instrument only the notes
        // end.
        fluid_synth_all_notes_off(synth_.Get(), channel);
    } else {
        fluid_synth_cc(synth_.Get(), channel, number, value);
    }
}

void SynthAdapter::SendSysex(std::span<const std::uint8_t> message) {
    const std::span<const std::uint8_t> body = song::WithoutFrame(message);
    if (const auto mode = song::ModeOfReset(body)) {
        Reset(*mode);
    } else if (const auto part = song::RhythmPartOf(body)) {
        map_.SetRhythmPart(*part);
        Apply(part->channel);
    } else if (!body.empty()) {
        fluid_synth_sysex(synth_.Get(), reinterpret_cast<const char*>(body.data()),
                          static_cast<int>(body.size()), nullptr, nullptr, nullptr, 0);
    }
}

void SynthAdapter::Reset(song::SynthMode mode) {
    fluid_synth_system_reset(synth_.Get());
    map_.Reset(mode);
    for (std::uint8_t channel = 0; channel < song::kMidiChannels; ++channel) {
        Apply(channel);
    }
}

void SynthAdapter::ReleaseAll() {
    for (std::uint8_t channel = 0; channel < song::kMidiChannels; ++channel) {
        fluid_synth_cc(synth_.Get(), channel, song::kSustain, 0);
        fluid_synth_cc(synth_.Get(), channel, song::kSostenuto, 0);
        fluid_synth_all_notes_off(synth_.Get(), channel);
    }
}

void SynthAdapter::Apply(std::uint8_t channel) {
    const ChannelVoice& voice = map_.Voice(channel);
    fluid_synth_set_channel_type(synth_.Get(), channel,
                                 voice.drum ? CHANNEL_TYPE_DRUM : CHANNEL_TYPE_MELODIC);
    synth_.SelectPreset(channel, voice.bank, voice.program);
}

} // namespace tracksmith::audio
