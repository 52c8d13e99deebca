#pragma once

#include "base/text.h"

namespace tracksmith::forms::instrument_texts {

// Choosing an instrument
inline constexpr Text kInstrument{De{"Instrument"}, En{"Instrument"}};
inline constexpr Text kChooseInstrument{De{"Instrument wählen"}, En{"Choose Instrument"}};
inline constexpr Text kSearchInstrument{De{"Hersteller oder Modell suchen"},
                                        En{"Search maker or model"}};
inline constexpr Text kChoose{De{"&Wählen"}, En{"C&hoose"}};
inline constexpr Text kCancel{De{"&Abbrechen"}, En{"&Cancel"}};
inline constexpr Text kSetNames{De{"%1-Namen"}, En{"%1 names"}};
inline constexpr Text kVoiceCount{De{"%1 Klänge"}, En{"%1 voices"}};

// Settings of the instruments
inline constexpr Text kOptionsTitle{De{"Instrumente"}, En{"Instruments"}};
inline constexpr Text kForOutput{De{"Für den &Ausgang"}, En{"For the &output"}};
inline constexpr Text kMainOutput{De{"%1 (alle Kanäle)"}, En{"%1 (all channels)"}};
inline constexpr Text kPreparing{De{"Vorbereiten der Songs"}, En{"Preparing songs"}};
inline constexpr Text kOnlyThisInstrument{De{"Nur dieses Instrument"}, En{"This instrument only"}};
inline constexpr Text kSysexTrack{De{"S&pur für die Meldungen"}, En{"&Track for the messages"}};
inline constexpr Text kRolandMap{De{"&Klangtabelle"}, En{"Sound &map"}};
inline constexpr Text kRolandMapHint{De{"Welche Klänge Bankwahl-LSB 0 meint"},
                                     En{"Which sounds bank select LSB 0 means"}};
inline constexpr Text kLimexTe200{De{"mit Tradition Exclusiv 200v3"},
                                  En{"with Tradition Exclusiv 200v3"}};
inline constexpr Text kLimexTe200Hint{De{"Klangnamen auch aus dessen Liste"},
                                      En{"Voice names from its list too"}};
inline constexpr Text kAudioRouting{De{"Audio-Ausgänge…"}, En{"Audio Outputs…"}};
inline constexpr Text kAudioRoutingTitle{De{"Audio-Ausgänge der Parts"},
                                         En{"Audio Outputs of the Parts"}};
inline constexpr Text kNoAudioRouting{De{"Für dieses Modell ist keine Meldung dafür bekannt"},
                                      En{"No message for this is known for this model"}};
inline constexpr Text kPart{De{"Part %1"}, En{"Part %1"}};
inline constexpr Text kSettingNotStored{De{"Die Einstellung konnte nicht gespeichert werden."},
                                        En{"The setting could not be stored."}};

// Voices
inline constexpr Text kVoicesTitle{De{"Klänge: %1"}, En{"Voices: %1"}};
inline constexpr Text kSearchVoice{De{"Name, Gruppe oder Nummern (8/34/1) suchen"},
                                   En{"Search name, category or numbers (8/34/1)"}};
inline constexpr Text kVoiceCounts{De{"%1 + %2 geerbt"}, En{"%1 + %2 inherited"}};
inline constexpr Text kInheritedFamily{De{"%1 (geerbt)"}, En{"%1 (inherited)"}};
inline constexpr Text kNoVoice{
    De{"Kein Klang passt dazu. Versuchen Sie weniger Wörter, eine Gruppe, oder Bank und Programm wie "
       "8/34/1."},
    En{"No voice matches. Try fewer words, a category, or bank and program such as 8/34/1."}};
inline constexpr Text kNoVoiceInFamily{
    De{"In dieser Familie passt kein Klang, in den anderen schon: wählen Sie \"alle Familien\"."},
    En{"No voice of this family matches, but others do: choose \"all families\"."}};
inline constexpr Text kChannelPlays{De{"Kanal %1 spielt: %2"}, En{"Channel %1 plays: %2"}};
inline constexpr Text kImportFailed{De{"Die Klangliste konnte nicht übernommen werden: %1"},
                                    En{"The voice list could not be taken: %1"}};
inline constexpr Text kVoices{De{"Klänge"}, En{"Voices"}};
inline constexpr Text kAllFamilies{De{"alle Familien"}, En{"all families"}};
inline constexpr Text kFamily{De{"Familie"}, En{"Family"}};
inline constexpr Text kCategory{De{"Gruppe"}, En{"Category"}};
inline constexpr Text kName{Both{"Name"}};
inline constexpr Text kMsb{Both{"MSB"}};
inline constexpr Text kLsb{Both{"LSB"}};
inline constexpr Text kProgram{De{"Programm"}, En{"Program"}};
inline constexpr Text kImport{De{"&Importieren…"}, En{"&Import…"}};
inline constexpr Text kExport{De{"&Exportieren…"}, En{"&Export…"}};
inline constexpr Text kImported{De{"%1 Klänge übernommen: %2"}, En{"%1 voices taken: %2"}};
inline constexpr Text kExported{De{"Gespeichert: %1"}, En{"Saved: %1"}};
inline constexpr Text kExportFailed{De{"Die Datei konnte nicht geschrieben werden: %1"},
                                    En{"The file could not be written: %1"}};
inline constexpr Text kWhichModel{De{"Welches Modell?"}, En{"Which model?"}};

} // namespace tracksmith::forms::instrument_texts
