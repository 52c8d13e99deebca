#pragma once

#include "base/text.h"

/// Texts of the window that revoices a folder.
namespace tracksmith::forms::folder_texts {

inline constexpr Text kTitle{De{"Auto-Revoicer auf Ordner anwenden - %1"},
                             En{"Apply Auto Revoicer to Folder - %1"}};
inline constexpr Text kPurpose{
    De{"Die Tabelle gilt für alle Songs des Ordners und der Ordner darin. Die Ergebnisse kommen in "
       "einen anderen Ordner; die Originale bleiben, wie sie sind."},
    En{"The table is applied to all songs of the folder and of the folders in it. The results go "
       "into another folder; the originals stay as they are."}};
inline constexpr Text kSource{De{"&Songs aus"}, En{"&Songs from"}};
inline constexpr Text kTarget{De{"&Ergebnisse nach"}, En{"&Results into"}};
inline constexpr Text kChooseSource{De{"&Wählen…"}, En{"C&hoose…"}};
inline constexpr Text kChooseTarget{De{"Wähle&n…"}, En{"Ch&oose…"}};
inline constexpr Text kSourceTitle{De{"Ordner mit den Songs"}, En{"Folder of the Songs"}};
inline constexpr Text kTargetTitle{De{"Ordner für die Ergebnisse"}, En{"Folder for the Results"}};
inline constexpr Text kAddBanks{De{"Fehlende &Bankwahlen ergänzen"},
                                En{"Add missing &bank selects"}};
inline constexpr Text kAddBanksHint{
    De{"Ohne Bankwahl vor einem Klang kann die Tabelle ihn nicht ersetzen. Songs, in denen die "
       "Tabelle auch dann nichts ersetzt, bleiben unverändert."},
    En{"Without a bank select before a voice the table cannot replace it. Songs in which the table "
       "replaces nothing even then stay unchanged."}};
inline constexpr Text kProgress{De{"Fortschritt"}, En{"Progress"}};
inline constexpr Text kRemarks{De{"Songs, zu denen etwas zu sagen ist"},
                               En{"Songs about which something is to be said"}};
inline constexpr Text kStart{De{"&Klänge ersetzen"}, En{"Replace &Voices"}};
inline constexpr Text kCancel{De{"&Abbrechen"}, En{"&Cancel"}};
inline constexpr Text kClose{De{"Sch&ließen"}, En{"C&lose"}};
inline constexpr Text kEmptyTable{
    De{"In der Tabelle dieses Instruments ist kein Eintrag angehakt."},
    En{"No entry is ticked in the table of this instrument."}};
inline constexpr Text kNoSource{De{"Der Ordner mit den Songs ist nicht da."},
                                En{"The folder of the songs is not there."}};
inline constexpr Text kNoTarget{De{"Die Ergebnisse brauchen einen Ordner."},
                                En{"The results need a folder."}};
inline constexpr Text kSameFolder{
    De{"Die Ergebnisse brauchen einen anderen Ordner, damit die Originale bleiben."},
    En{"The results need another folder, so that the originals stay."}};
inline constexpr Text kTargetInSource{
    De{"Der Ordner für die Ergebnisse liegt in dem mit den Songs; beim nächsten Mal gälten sie "
       "selbst als Songs."},
    En{"The folder for the results lies in that of the songs; next time they would count as songs "
       "themselves."}};
inline constexpr Text kLooking{De{"Die Songs werden gesucht…"}, En{"Looking for the songs…"}};
inline constexpr Text kReplace{
    De{"%1 von %2 Songs sind schon im Ordner für die Ergebnisse. Sollen sie ersetzt werden? Mit "
       "Nein bleiben sie, wie sie sind, und nur die anderen kommen dazu."},
    En{"%1 of %2 songs are in the folder for the results already. Replace them? With No they stay "
       "as they are, and only the others are added."}};
inline constexpr Text kWorking{De{"Die Songs bekommen ihre Klänge. Das Programm bleibt dabei "
                                  "benutzbar."},
                               En{"The songs get their voices. The program can be used "
                                  "meanwhile."}};
inline constexpr Text kCancelling{De{"Der laufende Song wird noch beendet…"},
                                  En{"The song at work is being finished…"}};
inline constexpr Text kNoMemory{De{"Der Speicher hat nicht gereicht."},
                                En{"Memory did not suffice."}};
inline constexpr Text kNoSongs{De{"In diesem Ordner sind keine Songs (.mid, .midi, .kar, .smf)."},
                               En{"There are no songs (.mid, .midi, .kar, .smf) in this folder."}};
inline constexpr Text kCancelled{
    De{"Abgebrochen. Was bis dahin fertig war, ist im Ordner für die Ergebnisse."},
    En{"Cancelled. What was ready by then is in the folder for the results."}};
inline constexpr Text kRevoiced{De{"Songs mit neuen Klängen: %1"}, En{"Songs with new voices: %1"}};
inline constexpr Text kUnchanged{De{"Nichts zu ersetzen, unverändert kopiert: %1"},
                                 En{"Nothing to replace, copied as they are: %1"}};
inline constexpr Text kWithoutBank{
    De{"… davon mit Klängen ohne Bankwahl, die die Tabelle nicht erreicht: %1"},
    En{"… among them with voices without bank select, which the table cannot reach: %1"}};
inline constexpr Text kKept{De{"Schon im Ordner, so gelassen: %1"},
                            En{"In the folder already, left as they were: %1"}};
inline constexpr Text kPartly{De{"Nur zum Teil ersetzt (siehe Liste): %1"},
                              En{"Replaced only in part (see the list): %1"}};
inline constexpr Text kFailed{De{"Nicht gelungen, nichts geschrieben (siehe Liste): %1"},
                              En{"Failed, nothing written (see the list): %1"}};

} // namespace tracksmith::forms::folder_texts
