#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "base/text.h"

/// Texts about backups.
namespace tracksmith::backups::texts {

/// Name of the backups of a song without a file.
inline constexpr Text kUnnamedSong{De{"Neuer Song"}, En{"New Song"}};
inline constexpr Text kNoFolder{De{"Für diesen Benutzer gibt es keinen Ordner für Daten."},
                                En{"This user has no folder for data."}};

/// That a backup could not be written, with the reason as a sentence, which may be empty.
std::string Failed(Language language, std::string_view reason);

/// Why a backup could not be made, as a sentence.
std::string Reason(const std::exception& error, Language language);

} // namespace tracksmith::backups::texts
