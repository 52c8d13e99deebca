#pragma once

#include <array>

#include "base/text.h"

/// Texts of the auto revoicer's window.
namespace tracksmith::forms::revoicer_texts {

inline constexpr Text kCaption{Both{" Auto Revoicer - "}};
inline constexpr Text kPurpose{
    De{"Was aus Programmwechseln wird, in jedem Song für dieses Instrument"},
    En{"What program changes are to become, in every song for this instrument"}};
inline constexpr Text kThisSong{De{"&Dieser Song: %1"}, En{"T&his Song: %1"}};
inline constexpr Text kWholeTable{De{"Ganze &Tabelle: %1"}, En{"Whole &Table: %1"}};
inline constexpr Text kSuggest{De{"&Vorschlagen"}, En{"&Suggest"}};
inline constexpr Text kImport{De{"&Einlesen…"}, En{"&Import…"}};
inline constexpr Text kExport{De{"E&xportieren…"}, En{"E&xport…"}};
inline constexpr Text kDelete{De{"&Löschen"}, En{"&Delete"}};
inline constexpr Text kAddBanks{De{"Fehlende &Bankwahlen ergänzen"},
                                En{"Add Missing &Bank Selects"}};
inline constexpr Text kApply{De{"Auf den Song an&wenden"}, En{"&Apply to Song"}};
inline constexpr Text kApplyToFolder{De{"Auf &Ordner anwenden…"}, En{"Apply to &Folder…"}};
inline constexpr Text kClose{De{"S&chließen"}, En{"&Close"}};
inline constexpr Text kOld{De{"&Alte Klänge"}, En{"&Old Voices"}};
inline constexpr Text kNew{De{"&Neue Klänge"}, En{"&New Voices"}};
inline constexpr Text kWhilePlaying{De{"Strg+B, während der Song läuft"},
                                    En{"Ctrl+B while the song plays on"}};
inline constexpr Text kPlay{De{"S&pielen"}, En{"&Play"}};
inline constexpr Text kStop{De{"Stop&p"}, En{"Sto&p"}};
inline constexpr Text kGrid{De{"Klänge und was aus ihnen wird"}, En{"Voices and what they become"}};
inline constexpr Text kChannels{De{"Kanäle"}, En{"Ch."}};
inline constexpr Text kFrom{De{"Aus"}, En{"From"}};
inline constexpr Text kTo{De{"wird"}, En{"To"}};
inline constexpr Text kNumbers{De{"Nummern"}, En{"Numbers"}};
inline constexpr Text kChanges{De{"Wechsel"}, En{"Changes"}};
inline constexpr Text kMatch{De{"Nähe"}, En{"Match"}};
inline constexpr Text kMatchHint{
    De{"Wie nahe der Klang nach Name und Kategorie dem alten kommt, in fünf Stufen"},
    En{"How near the voice comes to the old one by name and category, in five steps"}};
inline constexpr Text kSource{De{"Herkunft"}, En{"Source"}};
/// In the order of app::RevoicerDesk::Origin.
inline constexpr std::array<Text, 3> kOrigins{{Text{De{"eigene Tabelle"}, En{"own table"}},
                                               Text{De{"vorgeschlagen"}, En{"suggested"}},
                                               Text{De{"eingelesen"}, En{"imported"}}}};
inline constexpr Text kMatchOf{De{"%1 von 5"}, En{"%1 of 5"}};
inline constexpr Text kNotReplaced{De{"bleibt (Eingabe: Vorschläge)"},
                                   En{"stays (Enter: suggestions)"}};
inline constexpr Text kNoSuggestion{De{"Kein Klang des Instruments kommt nahe"},
                                    En{"No voice of the instrument comes near"}};
inline constexpr Text kNoVoices{
    De{"Zu diesem Instrument ist keine Klangliste bekannt. Unter Instrument > Klänge lässt sich "
       "eine einlesen."},
    En{"No voice list is known for this instrument. Instrument > Voices reads one."}};
inline constexpr Text kNothingSuggested{
    De{"Es gibt nichts vorzuschlagen: Die Klänge des Songs stehen in der Tabelle, sind schon die "
       "des Instruments, oder keiner kommt ihnen nahe."},
    En{"There is nothing to suggest: the song's voices stand in the table, are the instrument's "
       "own already, or none comes near."}};
inline constexpr Text kNotStored{
    De{"Die Tabelle konnte nicht gespeichert werden; sie gilt, bis das Fenster geschlossen wird."},
    En{"The table could not be stored; it holds until the window is closed."}};
inline constexpr Text kCannotRead{De{"Die Datei kann nicht gelesen werden."},
                                  En{"The file cannot be read."}};
inline constexpr Text kBadLine{
    De{"Zeile %1 ist kein Eintrag aus acht Feldern; nichts wurde eingelesen."},
    En{"Line %1 is no entry of eight fields; nothing was read."}};
inline constexpr Text kCannotWrite{De{"Die Datei kann nicht geschrieben werden."},
                                   En{"The file cannot be written."}};
inline constexpr Text kCounts{De{"%1 von %2 Programmwechseln werden ersetzt"},
                              En{"%1 of %2 program changes will be replaced"}};
inline constexpr Text kWithoutBank{De{"%1 ohne Bankwahl bleiben, wie sie sind"},
                                   En{"%1 without bank select stay as they are"}};
inline constexpr Text kSharingBank{De{"%1 haben die Bankwahl eines früheren"},
                                   En{"%1 have an earlier one's bank select"}};
inline constexpr Text kStopsAt{De{"endet an Kanal %1: Controller 32 fehlt"},
                               En{"ends at channel %1: controller 32 is missing"}};
inline constexpr Text kPortBusy{De{"Das ist gerade nicht zu hören: Der Ausgang ist nicht bereit."},
                                En{"This cannot be heard now: the output is not ready."}};
inline constexpr Text kNoSong{De{"Kein Song geladen"}, En{"No song is loaded"}};

} // namespace tracksmith::forms::revoicer_texts
