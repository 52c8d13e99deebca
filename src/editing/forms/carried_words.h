#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/text.h"
#include <QStringList>

#include "editing/music_state.h"

namespace tracksmith::forms {

/// Names the voice of a channel (0-15) by its program and what is known of its bank; empty when it
/// has no name.
using VoiceByNumbers =
    std::function<std::string(std::uint8_t channel, std::optional<std::uint8_t> msb,
                              std::optional<std::uint8_t> lsb, std::uint8_t program)>;

/// What is carried over a seam in a musician's words: first what concerns the whole song, then a
/// text for each channel, "Channel 4: Strings, Volume 96".
QStringList CarriedWords(const editing::CarriedState& carried, const VoiceByNumbers& nameVoice,
                         Language language);

} // namespace tracksmith::forms
