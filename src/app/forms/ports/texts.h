#pragma once

#include "base/text.h"

/// Texts of what shows whether the instrument is connected.
namespace tracksmith::forms::port_texts {

inline constexpr Text kTestNote{De{"&Testton"}, En{"Test &Note"}};
inline constexpr Text kTestNoteHint{De{"Spielt am gewählten Ausgang das mittlere C auf Kanal 1."},
                                    En{"Plays middle C on channel 1 of the chosen output."}};
inline constexpr Text kNoteNotTaken{De{"Der Ausgang nimmt keinen Ton an."},
                                    En{"The output takes no note."}};
inline constexpr Text kPlayKey{De{"Taste am Instrument"}, En{"Play a key on it"}};
/// The key, its channel from 1 and its velocity.
inline constexpr Text kPlayedKey{De{"%1, Kanal %2, Anschlag %3"},
                                 En{"%1, channel %2, velocity %3"}};
inline constexpr Text kNoKeyYet{De{"noch keine Taste gespielt"}, En{"no key came in yet"}};
inline constexpr Text kNoInputHere{De{"kein Eingang dafür da"}, En{"no input for it"}};

} // namespace tracksmith::forms::port_texts
