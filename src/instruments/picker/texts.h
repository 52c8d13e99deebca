#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/text.h"

/// Texts of picking voices.
namespace tracksmith::instruments::texts {

inline constexpr Text kDrumNotesFault{De{"Die Tabelle der Schlagzeugnoten ist beschädigt."},
                                      En{"The table of drum notes is damaged."}};
inline constexpr Text kDrumNotesUnreadable{
    De{"Die Tabelle der Schlagzeugnoten kann nicht gelesen werden."},
    En{"The table of drum notes cannot be read."}};

/// Title of the command for one of the three drum editors (`editor` from 1) of a channel (from 0):
/// the kit's name between double quotes, and the channel counted from 1.
inline std::string DrumEditorTitle(int editor, std::string_view kit, std::size_t channel,
                                   Language language) {
    const bool german = language == Language::German;
    std::string title = german ? "zeige " : "show ";
    title += std::to_string(editor) + ". Drum Editor - \"";
    title.append(kit).append(german ? "\" auf Midikanal " : "\" on midi channel ");
    return title + std::to_string(channel + 1);
}

} // namespace tracksmith::instruments::texts
