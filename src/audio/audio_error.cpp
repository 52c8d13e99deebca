#include "audio/audio_error.h"

namespace tracksmith::audio {
namespace {

std::string Compose(std::string_view text, std::string_view detail) {
    std::string message(text);
    if (!detail.empty()) {
        message.append(" ").append(detail);
    }
    return message;
}

} // namespace

EAudioError::EAudioError(AudioFault fault, const Text& text, std::string_view detail)
    : std::runtime_error(Compose(text.english, detail)),
      fault_(fault),
      text_(text),
      detail_(detail) {}

std::string EAudioError::In(Language language) const {
    return Compose(text_.In(language), detail_);
}

} // namespace tracksmith::audio
