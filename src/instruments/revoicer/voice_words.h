#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tracksmith::instruments {

/// The words of a voice's name or category in small letters, the abbreviations that makers use
/// written out: "NylonGt 2 (Live!)" gives "nylon", "guitar", "live". Numbers are left out.
std::vector<std::string> VoiceWords(std::string_view name);

} // namespace tracksmith::instruments
