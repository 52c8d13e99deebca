#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

/// Texts about changing and playing the song.
namespace tracksmith::session::texts {

inline constexpr Text kNoMemory{De{"Speicherzuordnungsfehler: Bitte mehr Speicher!"},
                                En{"Error allocating memory!"}};

inline constexpr Text kNotChanged{De{"Der Song wurde nicht geändert."},
                                  En{"The song was not changed."}};

inline constexpr Text kHearsOther{
    De{"Sie hören gerade einen anderen Stand des Songs. Zum Ändern schalten Sie zuerst auf "
       "\"Nachher\" zurück (Strg+B) oder stoppen das Vorhören."},
    En{"You are hearing another state of the song. To change it, switch back to \"After\" first "
       "(Ctrl+B) or stop the preview."}};

inline constexpr Text kAwaitsSong{
    De{"Ein anderer Song wird gerade geladen. Bis er da ist, bleibt dieser, wie er ist: Warten Sie "
       "kurz, oder brechen Sie das Laden ab."},
    En{"Another song is being loaded. Until it is here this one stays as it is: wait a moment, or "
       "cancel loading."}};

/// Why nothing can be done with the song while a port's driver does not return.
std::string PortHangs(Language language, std::string_view port);

/// The question before a change that cannot be taken back; `change` is what the user calls it.
std::string NoMemoryToTakeBack(Language language, const Text& change);

} // namespace tracksmith::session::texts
