#pragma once

#include "base/text.h"

/// Texts of the window in which a voice is picked.
namespace tracksmith::forms::picker_texts {

inline constexpr Text kTitle{De{"Klang für Kanal %1"}, En{"Voice for channel %1"}};
inline constexpr Text kNotesOn{De{"%1 Noten · %2"}, En{"%1 notes · %2"}};
inline constexpr Text kSearch{De{"Name, Gruppe oder Nummern (8/34/1)"},
                              En{"Name, category or numbers (8/34/1)"}};
inline constexpr Text kHits{De{"%1 Klänge"}, En{"%1 voices"}};
inline constexpr Text kNoHit{De{"Kein Klang passt dazu. Versuchen Sie weniger Wörter."},
                             En{"No voice matches. Try fewer words."}};
inline constexpr Text kFamilies{De{"Familien"}, En{"Families"}};
inline constexpr Text kCategories{De{"Gruppen"}, En{"Categories"}};
inline constexpr Text kSounds{De{"Klänge"}, En{"Voices"}};
inline constexpr Text kYours{De{"Ihre"}, En{"Yours"}};
inline constexpr Text kFavourites{De{"★ Favoriten"}, En{"★ Favourites"}};
inline constexpr Text kLastUsed{De{"Zuletzt benutzt"}, En{"Last used"}};
inline constexpr Text kOwn{De{"%1 eigene"}, En{"%1 own"}};
inline constexpr Text kAllOwn{De{"Alle eigenen"}, En{"All own voices"}};
inline constexpr Text kInherited{De{"%1 geerbt"}, En{"%1 inherited"}};
inline constexpr Text kAllOf{De{"Alle: %1"}, En{"All of %1"}};
inline constexpr Text kNoMatch{De{"kein Treffer"}, En{"no match"}};
inline constexpr Text kFoundByGroup{De{"über die Gruppe gefunden"}, En{"found by category"}};
inline constexpr Text kInSong{De{"Kanal %1"}, En{"channel %1"}};
inline constexpr Text kFavourite{De{"Favorit"}, En{"favourite"}};
inline constexpr Text kNoFavourite{De{"kein Favorit"}, En{"no favourite"}};
inline constexpr Text kName{Both{"Name"}};
inline constexpr Text kMsb{Both{"MSB"}};
inline constexpr Text kLsb{Both{"LSB"}};
inline constexpr Text kProgram{Both{"Prog."}};
inline constexpr Text kOldVoice{De{"Alter Klang"}, En{"Old voice"}};
inline constexpr Text kNewVoice{De{"Neuer Klang"}, En{"New voice"}};
inline constexpr Text kHeardNow{De{"%1, jetzt zu hören"}, En{"%1, heard now"}};
inline constexpr Text kSimilar{De{"≈ ähnlich"}, En{"≈ similar"}};
inline constexpr Text kExact{De{"Genau an dieser Bank vorhanden."},
                             En{"Found at exactly its bank."}};
inline constexpr Text kUnknownVoice{De{"Diese Nummern kennt das Instrument nicht."},
                                    En{"The instrument is not known to have these numbers."}};
inline constexpr Text kOld{De{"&Alt"}, En{"&Old"}};
inline constexpr Text kNew{De{"&Neu"}, En{"&New"}};
inline constexpr Text kSwitchHint{De{"Strg+B wechselt, während der Song läuft"},
                                  En{"Ctrl+B switches while the song plays"}};
inline constexpr Text kPlay{De{"&Song spielen"}, En{"&Play the Song"}};
inline constexpr Text kStop{De{"&Song anhalten"}, En{"Sto&p the Song"}};
inline constexpr Text kSolo{De{"So&lo"}, En{"So&lo"}};
inline constexpr Text kNoteOnSelection{De{"&Ton bei Auswahl"}, En{"No&te on selection"}};
inline constexpr Text kTestNote{De{"Ton"}, En{"Note"}};
inline constexpr Text kChangeAt{De{"Klang &wechseln bei"}, En{"Change the voice &at"}};
inline constexpr Text kAllPlaces{De{"allen %1 Stellen"}, En{"all %1 places"}};
inline constexpr Text kAtStart{De{"am Anfang"}, En{"at the start"}};
inline constexpr Text kAddFavourite{De{"&Favorit"}, En{"&Favourite"}};
inline constexpr Text kNotStored{De{"Der Favorit konnte nicht gespeichert werden."},
                                 En{"The favourite could not be stored."}};
inline constexpr Text kSaveToRevoicer{De{"In den Auto-Revo&icer"}, En{"Save to Auto &Revoicer"}};
inline constexpr Text kInRevoicer{De{"Steht jetzt in der Tabelle des Auto-Revoicers."},
                                  En{"Stands in the auto revoicer's table now."}};
inline constexpr Text kNotInRevoicer{
    De{"Die Tabelle des Auto-Revoicers konnte nicht gespeichert werden."},
    En{"The auto revoicer's table could not be stored."}};
inline constexpr Text kAccept{De{"Ü&bernehmen"}, En{"A&ccept"}};
inline constexpr Text kCancel{De{"Abb&rechen"}, En{"Cancel"}};

} // namespace tracksmith::forms::picker_texts
