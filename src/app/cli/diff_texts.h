#pragma once

#include "base/text.h"

/// Texts of the command `diff`.
namespace tracksmith::cli::texts {

inline constexpr Text kHelpDiff{De{"Zeigt, was sich zwischen zwei Songs unterscheidet"},
                                En{"Shows what differs between two songs"}};
inline constexpr Text kHelpDiffBefore{De{"Der frühere Song, - für die Standardeingabe"},
                                      En{"The earlier song, - for the standard input"}};
inline constexpr Text kHelpDiffAfter{De{"Der spätere Song"}, En{"The later song"}};
inline constexpr Text kHelpDiffJson{De{"Ein JSON-Objekt mit allen Unterschieden"},
                                    En{"One JSON object with all differences"}};
inline constexpr Text kHelpDiffInstrument{De{"Klänge mit den Namen dieses Instruments"},
                                          En{"Voices by their names on this instrument"}};
inline constexpr Text kDiffNeedsSongs{De{"diff vergleicht zwei Songs, keine Ordner."},
                                      En{"diff compares two songs, no folders."}};

} // namespace tracksmith::cli::texts
