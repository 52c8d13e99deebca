#pragma once

#include <string>

#include "midi/midi_driver.h"
#include "midi/texts.h"

namespace tracksmith::midi {

/// The text that a driver has for a code, else one that says it has none.
template <typename Driver>
std::string SystemErrorText(Driver& driver, ResultCode code) {
    std::string text = driver.ErrorText(code);
    return text.empty() ? std::string(texts::kErrorOutOfRange.english) : text;
}

} // namespace tracksmith::midi
