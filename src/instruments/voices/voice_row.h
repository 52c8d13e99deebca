#pragma once

#include <string>

#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// A record that owns its texts (UTF-8): what a table is made of where there is no file of it yet.
struct VoiceRow {
    std::string family;
    std::string category;
    VoiceNumbers numbers;
    std::string name;
};

} // namespace tracksmith::instruments
