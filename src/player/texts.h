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

/// The music waits for what an instrument must be told before.
inline constexpr Text kPreparing{De{"das Instrument wird vorbereitet"},
                                 En{"preparing the instrument"}};

// What may happen to a port; its name follows.
inline constexpr Text kPortLost{De{"Der MIDI-Ausgang antwortet nicht mehr: "},
                                En{"The MIDI output no longer responds: "}};

inline constexpr Text kPortHangs{De{"Der MIDI-Ausgang hängt fest: "},
                                 En{"The MIDI output is stuck: "}};
inline constexpr Text kPortNotOpened{De{"Der MIDI-Ausgang lässt sich nicht öffnen: "},
                                     En{"The MIDI output cannot be opened: "}};
inline constexpr Text kPortNotReady{De{"Der MIDI-Ausgang ist noch nicht bereit: "},
                                    En{"The MIDI output is not ready yet: "}};
inline constexpr Text kPortAbsent{De{"Der MIDI-Ausgang ist nicht angeschlossen: "},
                                  En{"The MIDI output is not connected: "}};
inline constexpr Text kMessageRefused{
    De{"Der MIDI-Ausgang nimmt eine Nachricht nicht an, sie wird ausgelassen: "},
    En{"The MIDI output does not accept a message, which is left out: "}};
inline constexpr Text kInputLost{De{"Der MIDI-Eingang antwortet nicht mehr: "},
                                 En{"The MIDI input no longer responds: "}};

// What the user may do about it.
inline constexpr Text kInUse{De{"Benutzt ihn gerade ein anderes Programm?"},
                             En{"Is another program using it?"}};
inline constexpr Text kSwitchOff{
    De{"Schalten Sie das Gerät aus und wieder ein, oder wählen Sie einen anderen Ausgang."},
    En{"Switch the device off and on again, or choose another output."}};

/// One of the texts about a port, with its name.
inline std::string OfPort(const Text& text, Language language, std::string_view productName) {
    return std::string(text.In(language)).append(productName);
}
/// The same with what the user may do.
inline std::string OfPort(const Text& text, Language language, std::string_view productName,
                          const Text& advice) {
    return OfPort(text, language, productName).append(".\r\n").append(advice.In(language));
}

} // namespace tracksmith::player::texts
