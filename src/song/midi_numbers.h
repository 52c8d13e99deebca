#pragma once

#include <cstddef>
#include <cstdint>

/// The numbers of the MIDI protocol that the program knows by name.
namespace tracksmith::song {

/// Status bytes of MIDI 1.0, without the channel where there is one.
inline constexpr std::uint8_t kNoteOff = 0x80;
inline constexpr std::uint8_t kNoteOn = 0x90;
inline constexpr std::uint8_t kPolyPressure = 0xA0;
inline constexpr std::uint8_t kControlChange = 0xB0;
inline constexpr std::uint8_t kProgramChange = 0xC0;
inline constexpr std::uint8_t kChannelPressure = 0xD0;
inline constexpr std::uint8_t kPitchBend = 0xE0;
inline constexpr std::uint8_t kSystemExclusive = 0xF0;
inline constexpr std::uint8_t kEscape = 0xF7;
inline constexpr std::uint8_t kMeta = 0xFF;

/// Types of meta events of Standard MIDI Files 1.0 (RP-001).
inline constexpr std::uint8_t kMetaSequenceNumber = 0x00;
inline constexpr std::uint8_t kMetaText = 0x01;
inline constexpr std::uint8_t kMetaTrackName = 0x03;
inline constexpr std::uint8_t kMetaLyric = 0x05;
inline constexpr std::uint8_t kMetaMarker = 0x06;
inline constexpr std::uint8_t kMetaChannelPrefix = 0x20;
inline constexpr std::uint8_t kMetaPort = 0x21;
inline constexpr std::uint8_t kMetaEndOfTrack = 0x2F;
inline constexpr std::uint8_t kMetaTempo = 0x51;
inline constexpr std::uint8_t kMetaSmpteOffset = 0x54;
inline constexpr std::uint8_t kMetaTimeSignature = 0x58;
inline constexpr std::uint8_t kMetaKeySignature = 0x59;
inline constexpr std::uint8_t kMetaSequencerSpecific = 0x7F;
inline constexpr std::uint8_t kNoMeta = 0xFF;

/// Channels of a MIDI port, and values of seven bits.
inline constexpr std::size_t kMidiChannels = 16;
inline constexpr std::size_t kControllers = 128;

/// Controllers of MIDI 1.0 and its additions.
inline constexpr std::uint8_t kBankMsb = 0;
inline constexpr std::uint8_t kModulation = 1;
inline constexpr std::uint8_t kDataMsb = 6;
inline constexpr std::uint8_t kVolume = 7;
inline constexpr std::uint8_t kBalance = 8;
inline constexpr std::uint8_t kPan = 10;
inline constexpr std::uint8_t kExpression = 11;
inline constexpr std::uint8_t kBankLsb = 32;
inline constexpr std::uint8_t kDataLsb = 38;
inline constexpr std::uint8_t kSustain = 64;
inline constexpr std::uint8_t kPortamento = 65;
inline constexpr std::uint8_t kSostenuto = 66;
inline constexpr std::uint8_t kSoftPedal = 67;
inline constexpr std::uint8_t kHarmonicContent = 71;
inline constexpr std::uint8_t kVibratoDelay = 78;
inline constexpr std::uint8_t kPortamentoControl = 84;
inline constexpr std::uint8_t kReverbSend = 91;
inline constexpr std::uint8_t kChorusSend = 93;
inline constexpr std::uint8_t kDataIncrement = 96;
inline constexpr std::uint8_t kDataDecrement = 97;
inline constexpr std::uint8_t kNonRegisteredLsb = 98;
inline constexpr std::uint8_t kNonRegisteredMsb = 99;
inline constexpr std::uint8_t kRegisteredLsb = 100;
inline constexpr std::uint8_t kRegisteredMsb = 101;
inline constexpr std::uint8_t kAllSoundOff = 120;
inline constexpr std::uint8_t kResetAllControllers = 121;
inline constexpr std::uint8_t kLocalControl = 122;
inline constexpr std::uint8_t kAllNotesOff = 123;
inline constexpr std::uint8_t kOmniOff = 124;
inline constexpr std::uint8_t kOmniOn = 125;
inline constexpr std::uint8_t kMono = 126;
inline constexpr std::uint8_t kPoly = 127;
/// From here on channel mode messages, which set no value.
inline constexpr std::uint8_t kFirstModeMessage = kAllSoundOff;

/// Registered parameters of MIDI 1.0 (most significant byte 0).
inline constexpr std::uint8_t kBendRange = 0;
inline constexpr std::uint8_t kFineTuning = 1;
inline constexpr std::uint8_t kCoarseTuning = 2;
/// Both bytes of the parameter number that selects none.
inline constexpr std::uint8_t kNoParameter = 127;

/// Bank numbers (MSB) that select drums or effects: General MIDI 2 and Yamaha XG.
inline constexpr std::uint8_t kGm2DrumBank = 120;
inline constexpr std::uint8_t kGm2MelodyBank = 121;
inline constexpr std::uint8_t kXgEffectVoiceBank = 64;
inline constexpr std::uint8_t kXgEffectKitBank = 126;
inline constexpr std::uint8_t kXgDrumBank = 127;
/// Whether a channel message selects one of the banks from kGm2DrumBank on. Free of branches.
constexpr bool IsDrumBank(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) {
    const unsigned controller = ((status & 0xF0U) << 8U) | data1;
    return (static_cast<unsigned>(controller == (0xB000U | kBankMsb)) &
            static_cast<unsigned>((data2 & 0x7FU) >= kGm2DrumBank)) != 0;
}
/// The drum channel of General MIDI, counted from 0.
inline constexpr std::uint8_t kDrumChannel = 9;

/// What applies before anything is set: pitch bend (of 14 bits), bend range in semitones.
inline constexpr std::uint16_t kBendCentre = 0x2000;
inline constexpr std::uint8_t kNeutralBendRange = 2;

/// Value that a controller (0-119) has before anything sets it (General MIDI 1 and 2).
constexpr std::uint8_t NeutralController(std::uint8_t controller) {
    switch (controller) {
        case kVolume:
            return 100;
        case kBalance:
        case kPan:
            return 64;
        case kExpression:
            return 127;
        case kReverbSend:
            return 40;
        default:
            return controller >= kHarmonicContent && controller <= kVibratoDelay ? 64 : 0;
    }
}

} // namespace tracksmith::song
