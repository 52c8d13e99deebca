#pragma once

#include "base/text.h"

/// Texts of the mixer.
namespace tracksmith::mixer::texts {

/// A strip is pressed while no song is open.
inline constexpr Text kNoSong{De{"Bitte öffnen Sie ein Midifile."}, En{"Please open a midi file."}};

/// Name of a change of the song.
inline constexpr Text kInsertAtStart{De{"Am Anfang einsetzen"}, En{"Insert at Start"}};

} // namespace tracksmith::mixer::texts
