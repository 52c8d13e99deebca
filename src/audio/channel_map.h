#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "song/mode_message.h"

namespace tracksmith::audio {

/// Bank in which SoundFonts keep their drum kits (SoundFont 2.04, section 7.2).
inline constexpr int kDrumBank = 128;

/// The preset that a channel plays.
struct ChannelVoice {
    /// SoundFont bank (kDrumBank for a drum kit) and program 0-127 that the channel got.
    int bank = 0;
    int program = 0;
    bool drum = false;
    /// False when the SoundFont lacks what was asked for and something similar sounds instead.
    bool exact = true;
    friend bool operator==(const ChannelVoice&, const ChannelVoice&) = default;
};

/// Finds for each of the 16 channels the preset that its bank selects and program changes mean
/// under the mode in force. Knows nothing of any synthesizer; one thread at a time.
class ChannelMap {
public:
    /// Tells whether the SoundFont has a preset.
    using HasPreset = std::function<bool(int bank, int program)>;

    /// Starts in GM mode.
    explicit ChannelMap(HasPreset hasPreset);

    /// Puts all channels into the state that follows a reset to `mode`.
    void Reset(song::SynthMode mode);

    /// Keeps a bank select (controller 0 and 32) for the next program change.
    void SelectBankMsb(std::uint8_t channel, std::uint8_t value);
    void SelectBankLsb(std::uint8_t channel, std::uint8_t value);

    /// Chooses the voice of `channel` (0-15) for `program` (0-127) and the bank selected before.
    const ChannelVoice& ChangeProgram(std::uint8_t channel, std::uint8_t program);

    /// Makes a channel a drum or melody part; its voice becomes the first one if that changes it.
    const ChannelVoice& SetRhythmPart(song::RhythmPart part);

    const ChannelVoice& Voice(std::uint8_t channel) const { return State(channel).voice; }
    song::SynthMode Mode() const { return mode_; }

private:
    struct ChannelState {
        std::uint8_t bankMsb = 0;
        std::uint8_t bankLsb = 0;
        ChannelVoice voice;
    };
    struct Preset {
        int bank = 0;
        int program = 0;
    };

    ChannelState& State(std::uint8_t channel) { return channels_[channel & 0x0F]; }
    const ChannelState& State(std::uint8_t channel) const { return channels_[channel & 0x0F]; }
    bool IsDrum(const ChannelState& state) const;
    int MelodyBank(const ChannelState& state) const;
    std::vector<Preset> Candidates(const ChannelState& state, int program) const;
    void Resolve(ChannelState& state, int program);

    HasPreset hasPreset_;
    song::SynthMode mode_ = song::SynthMode::Gm;
    std::array<ChannelState, 16> channels_{};
};

} // namespace tracksmith::audio
