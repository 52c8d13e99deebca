#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "base/text.h"

namespace tracksmith::audio {

/// What an EAudioError is about, for callers that answer differently.
enum class AudioFault {
    NoInstrument, ///< The built-in instrument cannot play: no SoundFont, or one that is broken.
    NotWritten    ///< The audio file cannot be made.
};

/// A fault of the built-in instrument or of the audio export. Carries both wordings; what() is the
/// English one.
class EAudioError : public std::runtime_error {
public:
    /// `text` followed by `detail` (UTF-8, usually a path; may be empty).
    EAudioError(AudioFault fault, const Text& text, std::string_view detail = {});

    AudioFault Fault() const { return fault_; }
    /// The message in `language`, UTF-8.
    std::string In(Language language) const;

private:
    AudioFault fault_;
    Text text_;
    std::string detail_;
};

} // namespace tracksmith::audio
