#pragma once

#include "base/text.h"

/// Texts of the window about what is wrong with a song.
namespace tracksmith::forms::health_texts {

inline constexpr Text kTitle{De{"Zustand"}, En{"Health"}};
inline constexpr Text kCheckedAgainst{De{"%1, geprüft für %2"}, En{"%1, checked against %2"}};
inline constexpr Text kSeverity{De{"Schwere"}, En{"Severity"}};
inline constexpr Text kFinding{De{"Befund"}, En{"Finding"}};
inline constexpr Text kChannel{De{"Kanal"}, En{"Ch."}};
inline constexpr Text kPosition{Both{"Position"}};
inline constexpr Text kCount{De{"Anzahl"}, En{"Count"}};
inline constexpr Text kRepair{De{"Reparatur"}, En{"Repair"}};
inline constexpr Text kNoRepair{De{"keine"}, En{"no repair"}};
inline constexpr Text kAll{De{"alle"}, En{"all"}};
inline constexpr Text kErrors{De{"Fehler: %1"}, En{"Errors: %1"}};
inline constexpr Text kWarnings{De{"Warnungen: %1"}, En{"Warnings: %1"}};
inline constexpr Text kHints{De{"Hinweise: %1"}, En{"Hints: %1"}};
inline constexpr Text kFindings{De{"Befunde"}, En{"Findings"}};
inline constexpr Text kNothing{De{"Nichts gefunden: Der Song ist in Ordnung."},
                               En{"Nothing found: the song is in good health."}};
inline constexpr Text kPlaceOf{De{"Stelle %1 von %2"}, En{"Place %1 of %2"}};
inline constexpr Text kPreviousPlace{De{"Vorige Stelle"}, En{"Previous place"}};
inline constexpr Text kNextPlace{De{"Nächste Stelle"}, En{"Next place"}};
inline constexpr Text kGoThere{De{"&Dorthin"}, En{"&Go There"}};
inline constexpr Text kRepairThese{Both{"%1 (%2)"}};
inline constexpr Text kReport{De{"Noten&bericht…"}, En{"Note Re&port…"}};
inline constexpr Text kTakeBack{De{"&Zurücknehmen"}, En{"&Take Back"}};
inline constexpr Text kSafe{De{"Sichere Reparaturen: %1, Stellen: %2"},
                            En{"Safe repairs: %1, places: %2"}};
inline constexpr Text kRepairAll{De{"&Alles Sichere reparieren (%1)"}, En{"Repair &All Safe (%1)"}};
inline constexpr Text kHealthButton{De{"Zustand: %1"}, En{"Health: %1"}};
inline constexpr Text kHealthCounting{De{"Zustand: …"}, En{"Health: …"}};
inline constexpr Text kChecking{De{"Der Song wird geprüft …"}, En{"Checking the song …"}};
inline constexpr Text kChannelFilter{De{"Befunde welcher Kanäle"},
                                     En{"Findings of which channels"}};
inline constexpr Text kAllChannels{De{"Alle Kanäle"}, En{"All channels"}};
inline constexpr Text kOneChannel{De{"Kanal %1"}, En{"Channel %1"}};
inline constexpr Text kListen{De{"An&hören"}, En{"&Listen"}};
inline constexpr Text kStopListening{De{"An&halten"}, En{"Stop &Listening"}};
inline constexpr Text kListenHint{De{"Spielt zwei Takte um diese Stelle."},
                                  En{"Plays two measures around this place."}};
inline constexpr Text kNow{De{"Jetzt"}, En{"Now"}};
inline constexpr Text kAfter{De{"Nach der Reparatur"}, En{"After the repair"}};
inline constexpr Text kPlaces{De{"Stellen im Song"}, En{"Places in the song"}};
inline constexpr Text kHealthGood{De{"Zustand: gut"}, En{"Health: good"}};

} // namespace tracksmith::forms::health_texts
