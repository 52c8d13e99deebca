#pragma once

#include <cstdint>
#include <span>

#include "audio/channel_map.h"
#include "audio/soft_synth.h"

namespace tracksmith::audio {

/// Plays MIDI messages on the built-in instrument: follows the resets of songs made for GM, GM2, GS
/// and XG instruments and gives each channel the nearest voice that the SoundFont has. Needs no
/// knowledge of who fetches the sound. One thread at a time.
class SynthAdapter {
public:
    /// `synth` must outlive the adapter. Starts in GM mode.
    explicit SynthAdapter(SoftSynth& synth);

    /// Sends a channel message (status 0x80-0xEF); other statuses are ignored. Data bytes above
    /// 127 lose their highest bit.
    void SendShort(std::uint8_t status, std::uint8_t data1, std::uint8_t data2);

    /// Sends a system exclusive message, with or without its F0 and F7.
    void SendSysex(std::span<const std::uint8_t> message);

    /// Silences everything and puts the instrument into the state after a reset to `mode`.
    void Reset(song::SynthMode mode);

    /// Lets go of all keys and pedals; the notes die away.
    void ReleaseAll();

    song::SynthMode Mode() const { return map_.Mode(); }
    /// What `channel` (0-15) plays.
    const ChannelVoice& Voice(std::uint8_t channel) const { return map_.Voice(channel); }

private:
    void SendController(std::uint8_t channel, std::uint8_t number, std::uint8_t value);
    void Apply(std::uint8_t channel);

    SoftSynth& synth_;
    ChannelMap map_;
};

} // namespace tracksmith::audio
