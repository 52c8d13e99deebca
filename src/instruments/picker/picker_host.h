#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// A voice in place of another one, with the names that people know them by.
struct VoiceReplacement {
    VoiceNumbers source;
    std::string sourceName;
    VoiceNumbers target;
    std::string targetName;
};

/// What a picker asks of the program. Called on the picker's thread.
class PickerHost {
public:
    virtual ~PickerHost() = default;

    /// The channel (0-15) sounds with this voice from now on, in place of what the song selects;
    /// nothing is written.
    virtual void TryVoice(std::size_t channel, VoiceNumbers numbers) = 0;

    /// The channel sounds as the song says again.
    virtual void EndTrying(std::size_t channel) = 0;

    /// Sounds or ends one note of the channel.
    virtual void PlayNote(std::size_t channel, std::uint8_t note, bool on) = 0;

    /// The other channels are silent while it is on.
    virtual void SetSolo(std::size_t channel, bool on) = 0;

    /// Puts the replacement into the auto revoicer's table; false when it could not be stored.
    virtual bool SaveToRevoicer(const VoiceReplacement& replacement) = 0;

    /// Writes the voice into the song at these of its places (see WriteVoice), and shows its name.
    virtual void WriteVoice(std::size_t channel, std::span<const std::size_t> changes,
                            VoiceNumbers numbers) = 0;
};

} // namespace tracksmith::instruments
