#pragma once

#include "base/text.h"

/// Texts about the words and chords of a song.
namespace tracksmith::forms::lyrics_texts {

inline constexpr Text kLyrics{De{"Liedtext und Akkorde"}, En{"Lyrics and chords"}};
inline constexpr Text kNone{De{"Dieser Song hat keinen Liedtext und keine Akkorde."},
                            En{"This song has no lyrics and no chords."}};
inline constexpr Text kLeave{De{"Esc: zurück    Leertaste: spielen, anhalten"},
                             En{"Esc: back    Space: play, stop"}};

// Menu
inline constexpr Text kFullScreen{De{"&Liedtext auf dem ganzen Bildschirm"},
                                  En{"&Lyrics Full Screen"}};
inline constexpr Text kMenuEncoding{De{"&Zeichensatz des Liedtexts"}, En{"Lyrics &Encoding"}};
inline constexpr Text kAutomatic{De{"&Automatisch"}, En{"&Automatic"}};
inline constexpr Text kUtf8{De{"&UTF-8 (Unicode)"}, En{"&Unicode (UTF-8)"}};
inline constexpr Text kWestern{De{"&Westeuropa (Windows-1252)"}, En{"&Western (Windows-1252)"}};
inline constexpr Text kCentral{De{"&Mitteleuropa (Windows-1250)"},
                               En{"&Central European (Windows-1250)"}};
inline constexpr Text kDos{De{"&DOS (Codepage 850)"}, En{"&DOS (code page 850)"}};
inline constexpr Text kMac{De{"Ma&cintosh (westlich)"}, En{"&Macintosh (Western)"}};

} // namespace tracksmith::forms::lyrics_texts
