#include "instruments/voices/voice_file_error.h"

#include "instruments/voices/texts.h"

namespace tracksmith::instruments {

VoiceFileError::VoiceFileError(const Text& reason, std::size_t line)
    : std::runtime_error(texts::AtLine(line, reason, Language::English)),
      reason_(reason),
      line_(line) {}

std::string VoiceFileError::Message(Language language) const {
    return texts::AtLine(line_, reason_, language);
}

} // namespace tracksmith::instruments
