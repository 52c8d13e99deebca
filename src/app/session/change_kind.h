#pragma once

#include "base/text.h"

namespace tracksmith::session {

/// What a change of the song needs and allows. The units that edit songs define their own kinds.
struct ChangeKind {
    /// What the user calls it: "Preparing". Stands behind "Take Back" in the menu.
    Text name;
    /// The song before it is kept, so that the user can take the change back.
    bool takeBack = false;
    /// Playing goes on afterwards at the same place.
    bool playsOn = false;
    /// Another song, or none, is in memory afterwards.
    bool replaces = false;
    /// The song is exchanged with the one that was kept.
    bool exchanges = false;
};

/// Opening, reloading, making and clearing a song.
inline constexpr ChangeKind kReplaceSong{.name = Text{De{"Öffnen"}, En{"Opening"}},
                                         .replaces = true};

/// Preparing the song for the instrument at the output.
inline constexpr ChangeKind kPrepareSong{
    .name = Text{De{"Vorbereiten"}, En{"Preparing"}}, .takeBack = true, .playsOn = true};

/// Putting an empty measure in front and preparing the song with it.
inline constexpr ChangeKind kInsertLeadIn{.name = Text{De{"Vortakt"}, En{"Lead-In Measure"}},
                                          .takeBack = true};

/// Making short notes longer when a song is loaded.
inline constexpr ChangeKind kLengthenNotes{
    .name = Text{De{"Noten verlängern"}, En{"Lengthening Notes"}}};

/// Choosing another voice for a channel.
inline constexpr ChangeKind kChangeVoice{
    .name = Text{De{"Klang wählen"}, En{"Choosing a Voice"}}, .takeBack = true, .playsOn = true};

/// Exchanging the song with what it was before the last change.
inline constexpr ChangeKind kTakeBack{
    .name = Text{De{"Zurücknehmen"}, En{"Taking Back"}}, .playsOn = true, .exchanges = true};

} // namespace tracksmith::session
