#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

#include "app/settings/settings_store.h"

/// Texts about the place where settings are kept, and for it.
namespace tracksmith::settings::texts {

/// What the user is told about a trouble of the settings in `file` (empty for the registry), with
/// the system's `reason` as a sentence, which may be empty.
std::string Trouble(Language language, TroubleKind kind, std::string_view file,
                    std::string_view reason);

/// What Windows calls a song's file in its lists.
inline constexpr Text kSongFile{De{"MIDI-Song"}, En{"MIDI song"}};

} // namespace tracksmith::settings::texts
