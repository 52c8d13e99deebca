#pragma once

#include "base/text.h"

/// Texts of asking which instrument is connected. %1 and %2 are filled in.
namespace tracksmith::app::texts {

inline constexpr Text kAsking{De{"%1 wird gefragt…"}, En{"Asking %1…"}};
inline constexpr Text kAwaited{De{"Die Antwort wird an %1 erwartet."},
                               En{"The answer is awaited at %1."}};

inline constexpr Text kAnswered{De{"%1 hat an %2 geantwortet"}, En{"%1 answered on %2"}};
inline constexpr Text kModelOf{De{"Ein Instrument von %1"}, En{"An instrument by %1"}};
inline constexpr Text kMakerUnknown{De{"Ein Instrument eines unbekannten Herstellers (%1)"},
                                    En{"An instrument of an unknown maker (%1)"}};
inline constexpr Text kIsChosen{
    De{"Für dieses Instrument werden die Songs vorbereitet. Mehr ist nicht zu tun."},
    En{"Songs are prepared for this instrument. There is nothing more to do."}};
inline constexpr Text kOtherIsChosen{De{"Songs werden zurzeit für %1 vorbereitet."},
                                     En{"Songs are prepared for %1 at present."}};
inline constexpr Text kNoneIsChosen{De{"Noch ist kein Instrument gewählt."},
                                    En{"No instrument is chosen yet."}};
inline constexpr Text kFollowsSet{De{"Es steht nicht in der Liste der Instrumente, folgt aber %1."},
                                  En{"It is not in the list of instruments, but follows %1."}};
inline constexpr Text kNotListed{
    De{"Es steht nicht in der Liste der Instrumente. Wählen Sie dort das ähnlichste, sonst GM2 "
       "Soundset oder GM Soundset."},
    En{"It is not in the list of instruments. Choose the one most like it, else GM2 Soundset or GM "
       "Soundset."}};
inline constexpr Text kModelUnknown{
    De{"Welches Modell es ist, sagt seine Kennung (%1) nicht. Wählen Sie es in der Liste der "
       "Instrumente."},
    En{"Its code (%1) does not tell the model. Choose it in the list of instruments."}};
inline constexpr Text kAlsoAnswered{De{"Auch geantwortet: %1."}, En{"Also answered: %1."}};

inline constexpr Text kNoAnswer{De{"An %1 hat nichts geantwortet"}, En{"Nothing answered on %1"}};
inline constexpr Text kNoAnswerChecks{
    De{"Bitte prüfen:\n"
       "• Das Instrument ist eingeschaltet.\n"
       "• Kabel führen in beide Richtungen: auch von seinem MIDI OUT zum Eingang %1. USB kann "
       "beides.\n"
       "• In seinen MIDI-Einstellungen ist der Empfang von System-Exclusive-Meldungen an.\n"
       "• Ausgang und Eingang sind die richtigen.\n"
       "Manche Instrumente können nicht antworten: Wählen Sie diese in der Liste."},
    En{"Please check:\n"
       "• The instrument is switched on.\n"
       "• Cables go both ways: also from its MIDI OUT to the input %1. USB does both.\n"
       "• Its MIDI settings let it receive system exclusive messages.\n"
       "• Output and input are the right ones.\n"
       "Some instruments cannot answer: choose these in the list."}};

inline constexpr Text kSongPlays{De{"Es spielt gerade ein Song"}, En{"A song is playing"}};
inline constexpr Text kSongPlaysAdvice{
    De{"Die Frage könnte ihn stören. Halten Sie ihn an und fragen Sie dann."},
    En{"The question could disturb it. Stop it, then ask."}};
inline constexpr Text kBuiltInIsKnown{De{"Das eingebaute Instrument ist bekannt"},
                                      En{"The built-in instrument is known"}};
inline constexpr Text kBuiltInAdvice{
    De{"Wählen Sie den Ausgang, an dem Ihr Instrument angeschlossen ist."},
    En{"Choose the output to which your instrument is connected."}};
inline constexpr Text kOutputMissing{De{"Der Ausgang %1 ist nicht da"},
                                     En{"The output %1 is not there"}};
inline constexpr Text kOutputMissingAdvice{
    De{"Schließen Sie das Instrument an, oder wählen Sie einen anderen Ausgang."},
    En{"Connect the instrument or choose another output."}};
inline constexpr Text kOutputFails{De{"Der Ausgang %1 nimmt nichts an"},
                                   En{"The output %1 takes no messages"}};
inline constexpr Text kOutputFailsAdvice{
    De{"Vielleicht benutzt ihn ein anderes Programm, oder sein Treiber hängt fest. Stecken Sie das "
       "Instrument aus und wieder ein, oder wählen Sie einen anderen Ausgang."},
    En{"Another program may be using it, or its driver is stuck. Unplug the instrument and plug it "
       "in again, or choose another output."}};
inline constexpr Text kInputMissing{De{"Der Eingang für die Antwort fehlt"},
                                    En{"The input for the answer is missing"}};
inline constexpr Text kInputMissingAdvice{
    De{"Wählen Sie den Eingang, an dem das MIDI OUT des Instruments angeschlossen ist."},
    En{"Choose the input to which the instrument's MIDI OUT is connected."}};
inline constexpr Text kInputFails{De{"Der Eingang %1 kann nicht geöffnet werden"},
                                  En{"The input %1 cannot be opened"}};
inline constexpr Text kInputFailsAdvice{De{"Vielleicht benutzt ihn ein anderes Programm."},
                                        En{"Another program may be using it."}};
inline constexpr Text kIdentitiesDamaged{
    De{"Die Tabelle der Kennungen fehlt oder ist beschädigt; manche Instrumente werden deshalb "
       "nicht erkannt."},
    En{"The table of identities is missing or damaged, so that some instruments are not "
       "recognised."}};

} // namespace tracksmith::app::texts
