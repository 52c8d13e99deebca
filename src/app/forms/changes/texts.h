#pragma once

#include "base/text.h"

/// Texts of the window about what has changed in a song.
namespace tracksmith::forms::changes_texts {

inline constexpr Text kTitle{De{"Was geändert wurde"}, En{"What Changed"}};
inline constexpr Text kAgainst{De{"%1: die geladene Datei gegen den Song von jetzt"},
                               En{"%1: the loaded file against the song now"}};
inline constexpr Text kAgainstNew{De{"Der neue Song, wie er angelegt wurde, gegen den von jetzt"},
                                  En{"The new song as it was made against the song now"}};
inline constexpr Text kChannelFilter{De{"Änderungen welcher Kanäle"},
                                     En{"Changes of which channels"}};
inline constexpr Text kAllChannels{De{"Alle Kanäle"}, En{"All channels"}};
inline constexpr Text kPlaces{De{"Stellen im Song"}, En{"Places in the song"}};
inline constexpr Text kChanges{De{"Änderungen"}, En{"Changes"}};
inline constexpr Text kKind{De{"Art"}, En{"Kind"}};
inline constexpr Text kPosition{Both{"Position"}};
inline constexpr Text kWas{De{"Geladen"}, En{"As loaded"}};
inline constexpr Text kIs{De{"Jetzt"}, En{"Now"}};
inline constexpr Text kDoneBy{De{"Durch"}, En{"Done by"}};
inline constexpr Text kByLoading{De{"Laden"}, En{"Loading"}};
inline constexpr Text kByMixer{Both{"Mixer"}};
inline constexpr Text kByPracticeTempo{De{"Übungstempo"}, En{"Practice Tempo"}};
inline constexpr Text kOneChange{De{"1 Änderung"}, En{"1 change"}};
inline constexpr Text kSomeChanges{De{"%1 Änderungen"}, En{"%1 changes"}};
inline constexpr Text kStays{De{"%1. Die Datei selbst bleibt, wie sie ist, bis Sie speichern."},
                             En{"%1. The file itself stays as it is until you save."}};
inline constexpr Text kStop{Both{"%1."}};
inline constexpr Text kSame{De{"Nichts geändert: Der Song ist wie die geladene Datei."},
                            En{"Nothing changed: the song is as the loaded file."}};
inline constexpr Text kComparing{De{"Der Song wird verglichen …"}, En{"Comparing the song …"}};
inline constexpr Text kNotCompared{De{"Das lässt sich nicht vergleichen: %1"},
                                   En{"This cannot be compared: %1"}};
inline constexpr Text kNoMemory{De{"Der Speicher reicht nicht."},
                                En{"There is not enough memory."}};
inline constexpr Text kPlay{De{"A&bspielen"}, En{"&Play"}};
inline constexpr Text kStopPlaying{De{"An&halten"}, En{"Sto&p"}};
inline constexpr Text kBefore{De{"&Vorher"}, En{"&Before"}};
inline constexpr Text kAfter{De{"&Nachher"}, En{"&After"}};
inline constexpr Text kSwitches{De{"Strg+B schaltet um, während der Song weiterspielt"},
                                En{"Ctrl+B switches while the song plays on"}};
inline constexpr Text kLoopHere{De{"Schleife h&ier"}, En{"&Loop here"}};
inline constexpr Text kLoopHint{De{"Wiederholt zwei Takte an der gewählten Stelle."},
                                En{"Repeats two measures at the chosen place."}};
inline constexpr Text kGoThere{De{"&Dorthin"}, En{"&Go There"}};
inline constexpr Text kSaveText{De{"Als &Text…"}, En{"Save as &Text…"}};
inline constexpr Text kSaveJson{De{"Als &JSON…"}, En{"Save as &JSON…"}};
inline constexpr Text kLoading{De{"Beim &Laden…"}, En{"On L&oading…"}};
inline constexpr Text kLoadingHint{De{"Zeigt, was das Laden und Vorbereiten getan haben."},
                                   En{"Shows what loading and preparing have done."}};
inline constexpr Text kClose{De{"&Schließen"}, En{"&Close"}};
inline constexpr Text kSaved{De{"Gespeichert: %1"}, En{"Saved: %1"}};
inline constexpr Text kSaveTextTitle{De{"Änderungen als Text speichern"},
                                     En{"Save Changes as Text"}};
inline constexpr Text kSaveJsonTitle{De{"Änderungen als JSON speichern"},
                                     En{"Save Changes as JSON"}};
inline constexpr Text kTextFiles{De{"Textdateien"}, En{"Text files"}};
inline constexpr Text kJsonFiles{De{"JSON-Dateien"}, En{"JSON files"}};
inline constexpr Text kFileName{De{"%1 - Änderungen"}, En{"%1 - changes"}};

} // namespace tracksmith::forms::changes_texts
