#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "base/text.h"

namespace tracksmith::instruments {

/// A file of voices that cannot be read, imported or written: why, in both languages, and in which
/// line. what() is the English message.
class VoiceFileError : public std::runtime_error {
public:
    /// `line` is counted from 1; 0 for a fault of the file as a whole.
    explicit VoiceFileError(const Text& reason, std::size_t line = 0);

    /// The reason, behind the line where there is one.
    std::string Message(Language language) const;
    const Text& Reason() const { return reason_; }
    std::size_t Line() const { return line_; }

private:
    Text reason_;
    std::size_t line_;
};

} // namespace tracksmith::instruments
