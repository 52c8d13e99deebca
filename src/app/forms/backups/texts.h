#pragma once

#include "base/text.h"

/// Texts about backups in the window.
namespace tracksmith::forms::backup_texts {

inline constexpr Text kRestoreEarlier{De{"Früheren Stand &wiederherstellen…"},
                                      En{"Restore &Earlier State…"}};
inline constexpr Text kMenuAutoBackup{De{"&Automatische Sicherung"}, En{"Automatic &Backups"}};
inline constexpr Text kOff{De{"&Aus"}, En{"&Off"}};
inline constexpr Text kEvery1{De{"Jede &Minute"}, En{"Every &minute"}};
inline constexpr Text kEvery2{De{"Alle &2 Minuten"}, En{"Every &2 minutes"}};
inline constexpr Text kEvery5{De{"Alle &5 Minuten"}, En{"Every &5 minutes"}};
inline constexpr Text kEvery10{De{"Alle &10 Minuten"}, En{"Every &10 minutes"}};
inline constexpr Text kEvery30{De{"Alle &30 Minuten"}, En{"Every &30 minutes"}};

inline constexpr Text kTitle{De{"Früheren Stand wiederherstellen"}, En{"Restore Earlier State"}};
inline constexpr Text kExplanation{
    De{"Während ein Song geändert wird, sichert ihn das Programm von selbst. Ein wiederhergestellter "
       "Stand ersetzt nur den Song im Speicher; die Datei bleibt, wie sie ist, bis Sie speichern."},
    En{"While a song is being changed, the program backs it up by itself. A restored state only "
       "replaces the song in memory; the file stays as it is until you save."}};
inline constexpr Text kBackups{De{"Gesicherte Stände"}, En{"Saved states"}};
inline constexpr Text kDate{De{"Datum"}, En{"Date"}};
inline constexpr Text kSong{Both{"Song"}};
inline constexpr Text kSize{De{"Größe"}, En{"Size"}};
inline constexpr Text kFile{De{"Datei des Songs"}, En{"File of the song"}};
inline constexpr Text kUnknown{De{"nicht bekannt"}, En{"not known"}};
inline constexpr Text kKilobytes{Both{"%1 KB"}};
inline constexpr Text kOnlyThisSong{De{"Nur &dieser Song"}, En{"&Only this song"}};
inline constexpr Text kNone{De{"Es gibt noch keine gesicherten Stände."},
                            En{"There are no saved states yet."}};
inline constexpr Text kDiffers{De{"Gegenüber dem offenen Song: %1"},
                               En{"Against the open song: %1"}};
inline constexpr Text kDiffersFromFile{De{"Gegenüber seiner Datei: %1"},
                                       En{"Against its file: %1"}};
inline constexpr Text kNoDifference{De{"kein Unterschied"}, En{"no difference"}};
inline constexpr Text kUnreadable{De{"Dieser Stand lässt sich nicht lesen."},
                                  En{"This state cannot be read."}};
inline constexpr Text kListen{De{"An&hören"}, En{"&Listen"}};
inline constexpr Text kStopListening{De{"An&halten"}, En{"Stop &Listening"}};
inline constexpr Text kListenHint{
    De{"Spielt den gewählten Stand von der Stelle an, an der der offene Song steht."},
    En{"Plays the chosen state from where the open song stands."}};
inline constexpr Text kRestore{De{"&Wiederherstellen"}, En{"&Restore"}};
inline constexpr Text kClose{De{"&Schließen"}, En{"&Close"}};
inline constexpr Text kOffer{
    De{"Das Programm wurde nicht richtig beendet. Von „%1“ gibt es einen gesicherten Stand: %2"},
    En{"The program did not end properly. There is a saved state of \"%1\": %2"}};
inline constexpr Text kCrashed{
    De{"Das Programm ist beim letzten Mal abgestürzt. Ein Bericht darüber, der beim Finden der "
       "Ursache hilft, liegt hier: %1"},
    En{"The program crashed last time. A record of it, which helps to find the cause, is here: %1"}};
inline constexpr Text kRestored{De{"Wiederhergestellt, noch nicht gespeichert: %1"},
                                En{"Restored, not saved yet: %1"}};

} // namespace tracksmith::forms::backup_texts
