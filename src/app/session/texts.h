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

/// Why nothing can be done with the song while a port's driver does not return.
std::string PortHangs(Language language, std::string_view port);

/// The question before a change that cannot be taken back; `change` is what the user calls it.
std::string NoMemoryToTakeBack(Language language, const Text& change);

} // namespace tracksmith::session::texts
