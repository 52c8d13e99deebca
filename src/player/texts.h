#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

/// Texts of the player. The wordings about missing devices are fixed, misspellings included.
namespace tracksmith::player::texts {

/// There is no output device at all.
inline constexpr Text kNoDevice{De{"Sie haben keine MIDI-Interface an Ihrem Computer!\r\n"
                                   "Daher ist keine MIDI-Wiedergabe möglich!"},
                                En{"There is no midi interface in your computer!\r\n"
                                   "Therefor no midi playback posible!"}};
/// There are output devices, but none can be used.
inline constexpr Text kNoUsableDevice{De{"Sie haben keine Midi-Schnittstelle in Ihrem Computer!\r\n"
                                         "Daher ist keine Midi-Wiedergabe möglich!"},
                                      En{"There is no midi interface in your computer!\r\n"
                                         "Therefor no midi playback posible!"}};

inline constexpr Text kPortLost{De{"Der MIDI-Ausgang antwortet nicht mehr: "},
                                En{"The MIDI output no longer responds: "}};

/// An output port has failed.
inline std::string PortLost(Language language, std::string_view productName) {
    return std::string(kPortLost.In(language)).append(productName);
}

} // namespace tracksmith::player::texts
