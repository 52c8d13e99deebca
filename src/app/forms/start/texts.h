#pragma once

#include "base/text.h"

/// Texts of the page at the first start.
namespace tracksmith::forms::start_texts {

inline constexpr Text kTitle{De{"Drei Antworten, und es klingt."},
                             En{"Three answers, and it plays."}};
inline constexpr Text kPurpose{
    De{"Alles lässt sich später ändern: Instrument, Ausgang und Datei stehen immer im Fenster."},
    En{"Each can be changed later: instrument, output and file are always in the window."}};
inline constexpr Text kInstrument{De{"Ihr Instrument"}, En{"Your instrument"}};
inline constexpr Text kInstrumentHint{De{"109 Keyboards, Module und Klangsätze"},
                                      En{"109 keyboards, modules and sound sets"}};
inline constexpr Text kPrepared{
    De{"Songs werden dafür vorbereitet: Resets, Klänge und Schlagzeug klingen wie gedacht."},
    En{"Songs are prepared for it: resets, voices and drums sound as they were meant."}};
inline constexpr Text kConnection{De{"Wo es angeschlossen ist"}, En{"Where it is connected"}};
inline constexpr Text kConnectionHint{De{"Schalten Sie das Keyboard zuerst ein"},
                                      En{"Switch the keyboard on first"}};
inline constexpr Text kOutputs{De{"Ausgänge"}, En{"Outputs"}};
inline constexpr Text kNoAnswer{
    De{"Keine Antwort? Prüfen Sie Kabel und Strom, dann die MIDI-Einstellung des Keyboards: Es muss "
       "auf den Kanälen 1 bis 16 empfangen."},
    En{"No answer? Check cable and power, then the keyboard's MIDI setup: it must receive on "
       "channels 1 to 16."}};
inline constexpr Text kSong{De{"Ein Song"}, En{"A song"}};
inline constexpr Text kSongHint{De{"Eine MIDI-Datei, Endung .mid"}, En{"A MIDI file, type .mid"}};
inline constexpr Text kOpen{De{"Song &öffnen…"}, En{"&Open a Song…"}};
inline constexpr Text kDemo{De{"Der Demo-Song"}, En{"The demo song"}};
inline constexpr Text kSongs{De{"Songs"}, En{"Songs"}};
inline constexpr Text kAgain{De{"Diese Seite beim Start &zeigen"}, En{"Sho&w this page at start"}};
inline constexpr Text kSkip{De{"Übe&rspringen"}, En{"S&kip"}};
inline constexpr Text kPlayDemo{De{"De&mo spielen"}, En{"Play the De&mo"}};
inline constexpr Text kOpenAndPrepare{De{"Öffnen und &vorbereiten"}, En{"Open and P&repare"}};
inline constexpr Text kOpenOnly{De{"&Nur öffnen"}, En{"&Just Open"}};
inline constexpr Text kLanguage{De{"Sprache"}, En{"Language"}};
// The sentence at the bottom: the song, the instrument, the output.
inline constexpr Text kOutcome{De{"„%1“ wird für %2 vorbereitet und über %3 gespielt."},
                               En{"“%1” will be prepared for %2 and play on %3."}};
inline constexpr Text kOutcomePlain{De{"„%1“ wird über %2 gespielt, wie er ist."},
                                    En{"“%1” will play on %2 as it is."}};

} // namespace tracksmith::forms::start_texts
