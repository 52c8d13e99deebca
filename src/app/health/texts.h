#pragma once

#include <array>
#include <string_view>

#include "base/text.h"

#include "app/health/finding.h"

/// Texts about what is wrong with a song.
namespace tracksmith::health {

/// What a rule says. "%1" is the number of times, "%2" the finding's value, "%3" the instrument.
struct RuleWords {
    std::string_view name;
    Text title;
    Text explanation;
    Text repair{Both{""}};
    Text change{Both{""}};
};

/// In the order of Rule.
inline constexpr std::array<RuleWords, kRules> kRuleWords{{
    {"noteWithoutEnd", Text{De{"Note ohne Ende"}, En{"Note without end"}},
     Text{De{"Noten, die beginnen und nie enden: %1. Sie klingen weiter, bis der Song aufhört."},
          En{"Notes that begin and never end: %1. They sound until the song stops."}},
     Text{De{"Beenden"}, En{"End it"}},
     Text{De{"Jede endet, wo die nächste Note der Tonhöhe beginnt, spätestens nach einem Takt."},
          En{"Each ends where the next note of its pitch begins, after a measure at the latest."}}},
    {"unknownVoice", Text{De{"Klang, den %3 nicht hat"}, En{"Voice that %3 does not have"}},
     Text{
         De{"Der Kanal wählt einen Klang, den das Instrument nicht kennt (%1-mal). Es spielt dann einen anderen oder gar keinen."},
         En{"The channel selects a voice that the instrument does not know (%1×). It plays another one then, or none."}}},
    {"earlyNotes",
     Text{De{"Noten, bevor das Instrument bereit ist"}, En{"Notes before the instrument is ready"}},
     Text{
         De{"Noten, die beginnen, während das Instrument noch die Meldungen am Anfang verarbeitet: %1. Ein leerer Takt davor gibt ihm die Zeit."},
         En{"Notes that begin while the instrument still takes in the messages at the start: %1. An empty measure in front gives it the time."}}},
    {"settingsBeforeReset",
     Text{De{"Einstellungen vor einem Reset"}, En{"Settings before a reset"}},
     Text{
         De{"Ein Reset löscht, was der Kanal vorher eingestellt hat, und es wird danach nicht wiederholt. Betroffene Einstellungen: %2."},
         En{"A reset wipes what the channel has set before it, and it is not set again. Settings that are lost: %2."}}},
    {"sustainAtEnd", Text{De{"Pedal am Ende gedrückt"}, En{"Pedal left on at the end"}},
     Text{De{"Das Haltepedal wird nicht mehr losgelassen. Im nächsten Song klingt alles nach."},
          En{"The sustain pedal is never released. Everything rings on in the next song."}},
     Text{De{"Loslassen"}, En{"Release"}},
     Text{De{"Am Ende des Songs wird das Pedal losgelassen."},
          En{"The pedal is released at the end of the song."}}},
    {"bendAtEnd", Text{De{"Tonhöhenrad am Ende bei %2"}, En{"Bend at %2 at the end"}},
     Text{
         De{"Das Tonhöhenrad geht nicht zur Mitte zurück. Der nächste Song klingt auf diesem Kanal "
            "verstimmt."},
         En{"The pitch bend does not return to its centre. The next song is out of tune on this "
            "channel."}},
     Text{De{"Zur Mitte"}, En{"Centre"}},
     Text{De{"Am Ende des Songs geht das Rad zur Mitte."},
          En{"The bend returns to its centre at the end of the song."}}},
    {"programWithoutBank", Text{De{"Programmwechsel ohne Bank"}, En{"Program change without bank"}},
     Text{
         De{"Der Kanal wählt ein Programm, ohne zu sagen, in welcher Bank (%1-mal). Das Instrument nimmt die, die der vorige Song gelassen hat."},
         En{"The channel selects a program without saying in which bank (%1×). The instrument takes the one that the song before left."}},
     Text{De{"Bank ergänzen"}, En{"Add bank"}},
     Text{De{"Vor den ersten Programmwechsel kommt die Bank, in der das Instrument beginnt."},
          En{"The bank that the instrument starts in goes before the first program change."}}},
    {"noProgram", Text{De{"Noten ohne Programm"}, En{"Notes without a program"}},
     Text{
         De{"Noten auf einem Kanal, der noch keinen Klang gewählt hat: %1. Was klingt, hängt vom vorigen Song ab."},
         En{"Notes on a channel that has selected no voice yet: %1. What sounds depends on the song before."}}},
    {"overlaps", Text{De{"Überlappende Noten"}, En{"Overlapping notes"}},
     Text{
         De{"Eine Note beginnt, während dieselbe Taste noch klingt (%1-mal). Viele Keyboards beenden beide beim ersten Loslassen: Es entstehen Lücken."},
         En{"A note begins while the same key still sounds (%1×). Many keyboards cut both at the first release: you hear gaps."}},
     Text{De{"Kürzen"}, En{"Shorten"}},
     Text{
         De{"Die frühere Note endet, wo die nächste beginnt, keine geht verloren. Note-Offs, die vorrücken: %1."},
         En{"The earlier note ends where the next begins, none is lost. Note-offs that move: %1."}}},
    {"noteWithoutBeginning", Text{De{"Note-Off ohne Note"}, En{"Note-off without a note"}},
     Text{
         De{"Eine Note endet, die nicht begonnen hat (%1-mal). Man hört davon nichts, außer sie beendet eine andere zu früh."},
         En{"A note ends that has not begun (%1×). Nobody hears it, unless it cuts another one short."}},
     Text{De{"Entfernen"}, En{"Remove"}},
     Text{De{"Keine Note ändert sich. Note-Offs, die wegfallen: %1."},
          En{"No note changes. Note-offs that go: %1."}}},
    {"shortNotes", Text{De{"Sehr kurze Noten"}, En{"Very short notes"}},
     Text{De{"Noten, die so kurz sind, dass manche Keyboards sie verschlucken: %1."},
          En{"Notes that are so short that some keyboards swallow them: %1."}},
     Text{De{"Verlängern"}, En{"Lengthen"}},
     Text{De{"Die Note-Offs rücken nach hinten, höchstens bis zur nächsten Note der Tonhöhe."},
          En{"Their note-offs move back, at most to the next note of the pitch."}}},
    {"lengthenedNotes", Text{De{"Beim Laden verlängert"}, En{"Lengthened when loading"}},
     Text{
         De{"Sehr kurze Noten, die beim Laden die Mindestlänge bekommen haben: %1. Zurücknehmen stellt die Längen der Datei wieder her."},
         En{"Very short notes that were given the minimum length when the song was loaded: %1. Take Back restores the lengths of the file."}}},
    {"noVolume", Text{De{"Keine Lautstärke im Song"}, En{"No volume in the song"}},
     Text{De{"Der Kanal stellt seine Lautstärke nicht ein. Er spielt so laut, wie es der vorige "
             "Song gelassen hat."},
          En{"The channel does not set its volume. It plays as loud as the song before left it."}},
     Text{De{"100 setzen"}, En{"Insert 100"}},
     Text{De{"Vor die erste Note kommt die Lautstärke 100, die ohne Angabe gilt."},
          En{"Volume 100, which holds without one, goes before the first note."}}},
    {"severalResets", Text{De{"Mehrere Resets"}, En{"Several resets"}},
     Text{
         De{"Der Song setzt das Instrument öfter als einmal zurück. Überzählige Resets: %1. Jeder kostet Zeit und löscht, was vorher eingestellt war."},
         En{"The song resets the instrument more than once. Resets too many: %1. Each takes time and wipes what was set before."}}},
    {"unclearEncoding", Text{De{"Text in unklarer Kodierung"}, En{"Text in an unclear encoding"}},
     Text{De{"Texte, bei denen sich nicht erkennen lässt, welche Buchstaben gemeint sind: %1."},
          En{"Texts in which nobody can tell which letters are meant: %1."}}},
    {"manyNotes", Text{De{"%2 Noten zugleich"}, En{"%2 notes at once"}},
     Text{De{"So viele Noten klingen an einer Stelle zugleich. Einfachere Instrumente lassen dann "
             "welche aus."},
          En{"So many notes sound at one place. Simpler instruments drop some of them then."}}},
}};

namespace texts {

inline constexpr std::array<Text, 3> kSeverities{{Text{De{"Fehler"}, En{"Error"}},
                                                  Text{De{"Warnung"}, En{"Warning"}},
                                                  Text{De{"Hinweis"}, En{"Hint"}}}};
inline constexpr Text kTheInstrument{De{"das Instrument"}, En{"the instrument"}};

} // namespace texts
} // namespace tracksmith::health
