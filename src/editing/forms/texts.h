#pragma once

#include <cstdint>

#include "base/text.h"
#include <QString>

/// Texts of the windows for ranges.
namespace tracksmith::forms::range_texts {

// The switch between the tools.
inline constexpr Text kDelete{De{"&Löschen"}, En{"&Delete"}};
inline constexpr Text kCopy{De{"&Kopieren"}, En{"C&opy"}};
inline constexpr Text kTranspose{De{"&Transponieren"}, En{"&Transpose"}};

// Titles, and what each tool does.
inline constexpr Text kDeleteRange{De{"Bereich löschen"}, En{"Delete range"}};
inline constexpr Text kCopyRange{De{"Bereich kopieren"}, En{"Copy range"}};
inline constexpr Text kTransposeRange{De{"Bereich transponieren"}, En{"Transpose range"}};
inline constexpr Text kDeletePurpose{De{"%1, alle Spuren; die Lücke schließt sich"},
                                     En{"%1, all tracks; the gap closes"}};
inline constexpr Text kCopyPurpose{De{"%1, alle Spuren; was dahinter steht, rückt nach hinten"},
                                   En{"%1, all tracks; what stands behind moves later"}};
inline constexpr Text kTransposePurpose{De{"%1, Schlagzeug nie"}, En{"%1, drum parts never"}};

// Positions.
inline constexpr Text kFrom{De{"Von Takt : Schlag"}, En{"From measure : beat"}};
inline constexpr Text kTo{De{"Bis Takt : Schlag"}, En{"To measure : beat"}};
inline constexpr Text kDestination{De{"Nach"}, En{"Destination"}};
inline constexpr Text kLength{De{"Länge"}, En{"Length"}};
inline constexpr Text kUseLoop{De{"&Schleife nehmen"}, En{"Use &Loop"}};
inline constexpr Text kNoLoop{De{"Es ist keine Schleife gesetzt."}, En{"There is no loop."}};
inline constexpr Text kPlayheadHint{De{"Die Stelle nehmen, an der die Musik steht"},
                                    En{"Take the place where the music stands"}};
QString MeasureField(const QString& caption, Language language);
QString BeatField(const QString& caption, Language language);
QString PlayheadButton(const QString& caption, Language language);

// What is shown.
inline constexpr Text kNow{De{"Jetzt"}, En{"Now"}};
inline constexpr Text kAfter{De{"Danach"}, En{"After"}};
inline constexpr Text kNowHint{
    De{"Der Song, wie er ist; der Bereich lässt sich mit der Maus ziehen"},
    En{"The song as it is; the range can be dragged with the mouse"}};
inline constexpr Text kAfterHint{De{"Der Song, wie er danach ist"}, En{"The song as it will be"}};
inline constexpr Text kSeamHint{De{"Die beiden Takte um die Nahtstelle"},
                                En{"The two measures around the seam"}};
inline constexpr Text kBringState{De{"Klänge und Einstellungen &mitnehmen"},
                                  En{"&Bring voices and settings along"}};
inline constexpr Text kBlockStart{De{"A&nfang"}, En{"St&art"}};
inline constexpr Text kBlockEnd{De{"&Ende"}, En{"&End"}};
inline constexpr Text kAtSeam{De{"An der Nahtstelle"}, En{"At the seam"}};
inline constexpr Text kUndoHint{De{"Bearbeiten > Rückgängig holt alles zurück"},
                                En{"Edit > Undo brings it back"}};
inline constexpr Text kPreview{De{"&Vorhören"}, En{"&Preview"}};
inline constexpr Text kStopPreview{De{"&Vorhören stoppen"}, En{"Stop &Preview"}};
inline constexpr Text kPreviewSeam{De{"wiederholt zwei Takte an der Nahtstelle"},
                                   En{"loops the two measures around the seam"}};
inline constexpr Text kPreviewKey{De{"spielt den Bereich in der neuen Tonart"},
                                  En{"plays the range in its new key"}};
inline constexpr Text kCancel{De{"Abb&rechen"}, En{"&Cancel"}};

// Transposing.
inline constexpr Text kSemitones{De{"Halbtöne"}, En{"Semitones"}};
inline constexpr Text kChannels{De{"Kanäle"}, En{"Channels"}};
inline constexpr Text kAllChannels{De{"All&e MIDI-Kanäle"}, En{"All MIDI c&hannels"}};
inline constexpr Text kOnlyOnChannel{De{"Nur auf &MIDI-Kanal"}, En{"Only on &MIDI channel"}};
inline constexpr Text kChannelList{De{"MIDI-Kanal"}, En{"MIDI channel"}};
inline constexpr Text kChannelColumn{De{"Kan."}, En{"Ch."}};
inline constexpr Text kVoiceColumn{De{"Klang"}, En{"Voice"}};
inline constexpr Text kNotesColumn{De{"Noten"}, En{"Notes"}};
inline constexpr Text kDrums{De{"Schlagzeug"}, En{"drums"}};
inline constexpr Text kStay{De{"bleiben, wie sie sind"}, En{"stay as they are"}};
inline constexpr Text kWhatMoves{De{"Was sich ändert"}, En{"What moves"}};
inline constexpr Text kChords{De{"Akkorde"}, En{"Chords"}};
inline constexpr Text kNoFolds{De{"keine Note muss oktaviert werden"},
                               En{"no note has to be folded"}};
inline constexpr Text kCloseTranspose{
    De{"Bitte schliessen Sie das Fenster \"Bereich transponieren\"."},
    En{"Please close the \"Transpose range\" window."}};
/// The question where the list names one channel and another one will be changed.
QString OtherChannel(std::int64_t named, std::int64_t changed, Language language);

/// "8 measures · 0:12".
QString LengthText(std::int64_t measures, std::int64_t ms, Language language);
QString Measures(std::int64_t measures, Language language);
QString MeasuresCopied(std::int64_t measures, Language language);
QString MeasuresNew(std::int64_t measures, Language language);
QString Shorter(std::int64_t ms, Language language);
/// The measure at a seam: which it was, or is a copy of.
QString WasMeasure(std::int64_t measure, Language language);
QString IsMeasureAgain(std::int64_t measure, Language language);
// The button that carries out.
QString DeleteMeasures(std::int64_t measures, Language language);
QString CopyMeasures(std::int64_t measures, Language language);
QString TransposeBy(const QString& semitones, Language language);
/// The same for one channel, which is named.
QString TransposeChannelBy(std::int64_t channel, const QString& semitones, Language language);

// Lines of what happens.
QString NotesGo(std::int64_t notes, Language language);
QString NotesCome(std::int64_t notes, std::int64_t ms, Language language);
QString NotesEnd(std::int64_t notes, Language language);
QString NotesBegin(std::int64_t notes, Language language);
QString SettingsCarried(std::int64_t settings, Language language);
QString MessagesGo(std::int64_t messages, Language language);
QString MessagesCome(std::int64_t messages, Language language);
QString NotesMove(std::int64_t notes, std::int64_t channels, Language language);
QString NotesFolded(std::int64_t notes, Language language);
QString NotesStay(std::int64_t notes, Language language);

// What is carried over a seam.
inline constexpr Text kChannelSettings{De{"Kanal %1: %2"}, En{"Channel %1: %2"}};
inline constexpr Text kTempoSetting{Both{"Tempo %1"}};
inline constexpr Text kMetreSetting{De{"Takt %1/%2"}, En{"Metre %1/%2"}};
inline constexpr Text kKeySetting{De{"Tonart"}, En{"Key"}};
inline constexpr Text kBendRange{De{"Tonhöhenrad-Bereich %1"}, En{"Bend range %1"}};
inline constexpr Text kParameter{De{"Parameter %1/%2: %3"}, En{"Parameter %1/%2: %3"}};
inline constexpr Text kKeyPressure{De{"Tastendruck"}, En{"Key pressure"}};
inline constexpr Text kProgram{De{"Programm %1"}, En{"Program %1"}};

// What the status line says afterwards; the number of measures or notes stands behind.
inline constexpr Text kDeleteDone{De{"Gelöschte Takte: "}, En{"Measures deleted: "}};
inline constexpr Text kCopyDone{De{"Kopierte Takte: "}, En{"Measures copied: "}};
inline constexpr Text kTransposeDone{De{"Transponierte Noten: "}, En{"Notes transposed: "}};

} // namespace tracksmith::forms::range_texts
