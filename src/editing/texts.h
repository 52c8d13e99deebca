#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

/// Texts of the tools that edit ranges of measures, and of their undo.
namespace tracksmith::editing::texts {

// Undo.
inline constexpr Text kUndo{De{"Rückgängig"}, En{"Undo"}};
inline constexpr Text kUndoCopyRange{De{"Rückgängig - Bereich kopieren"}, En{"Undo - copy range"}};
inline constexpr Text kUndoDeleteRange{De{"Rückgängig - Bereich löschen"},
                                       En{"Undo - delete range"}};
inline constexpr Text kUndoFadeOut{De{"Rückgängig - Fade-Out"}, En{"Undo - Fade out"}};
inline constexpr Text kUndoTransposeRange{De{"Rückgängig - Bereich transponieren"},
                                          En{"Undo - transpose range"}};
/// The number of the channel follows.
inline constexpr Text kUndoRecording{De{"Rückgängig - Aufnahme auf MIDI Kanal "},
                                     En{"Undo - Recording on midi channel "}};
inline constexpr Text kNoSnapshot{
    De{"Von dem Song vor diesem Befehl gibt es keine Kopie. Es wurde nichts geändert."},
    En{"There is no copy of the song from before this command. Nothing was changed."}};
inline constexpr Text kNoMemory{De{"Speicherzuordnungsfehler: Bitte mehr Speicher!"},
                                En{"Error allocating memory!"}};

/// The question before undoing; `command` is what will be undone.
std::string UndoQuestion(Language language, std::string_view command);

// Positions.
inline constexpr Text kNoFrom{
    De{R"(Bitte geben Sie Takt und Schlag in das Feld "Von" ein, z.B. "8:04", "16:01".)"},
    En{R"(Please enter measure and beat into the "From" field, e.g. "8:04", "16:01".)"}};
inline constexpr Text kNoEnd{
    De{R"(Bitte geben Sie Takt und Schlag in das Feld "Bis" ein, z.B. "8:04", "16:01".)"},
    En{R"(Please enter measure and beat into the "End" field, e.g. "8:04", "16:01".)"}};
inline constexpr Text kNoCopyFrom{De{R"(Bitte geben Sie Takt und Schlag in das Feld "Von" ein.)"},
                                  En{R"(Please enter measure and beat into the "From" field.)"}};
inline constexpr Text kNoCopyEnd{De{R"(Bitte geben Sie Takt und Schlag in das Feld "Bis" ein.)"},
                                 En{R"(Please enter measure and beat into the "End" field.)"}};
inline constexpr Text kNoCopyTo{De{R"(Bitte geben Sie Takt und Schlag in das Feld "Nach" ein.)"},
                                En{R"(Please enter measure and beat into the "To" field.)"}};
inline constexpr Text kBadFrom{De{R"(Fehler beim Berechnen der "Von"-Position)"},
                               En{R"(Error calculating the "from" position)"}};
inline constexpr Text kBadTo{De{R"(Fehler beim Berechnen der "Bis"-Position)"},
                             En{R"(Error calculating the "to" position)"}};
inline constexpr Text kStartNotBeforeEnd{
    De{R"(Die "Start-Position" muss kleiner als die "End-Position" sein!)"},
    En{R"("Start-Position" must be smaller than "End-Position"!)"}};
inline constexpr Text kFromTooLow{De{R"(Die "Von"-Position ist zu klein!)"},
                                  En{R"(The "From" position is too low!)"}};
// The position of the song's end follows, and the closing mark.
inline constexpr Text kStartBehindEnd{
    De{R"(Die "Start-Position" muss kleiner sein als "Songende = )"},
    En{R"("Start-Position" must be smaller than "End of song = )"}};
inline constexpr Text kEndBehindEnd{De{R"(Die "End-Position" muss kleiner sein als "Songende = )"},
                                    En{R"("End-Position" must be smaller than "End of song = )"}};
inline constexpr Text kToBehindEnd{De{R"(Die "Ziel-Position" muss kleiner sein als "Songende = )"},
                                   En{R"("To-Position" must be smaller than "End of song = )"}};
inline constexpr Text kClosingMark{Both{R"("!)"}};
inline constexpr Text kLeadIn{De{"Die Vorlauftakte sollten nicht gelöscht werden!"},
                              En{"Do not delete the starting measures!"}};
inline constexpr Text kTooLong{De{"Der Song würde zu lang."},
                               En{"The song would become too long."}};

// Notes.
inline constexpr Text kDoubleNoteOn{De{"Doppeltes NoteOn gefunden ..."},
                                    En{"Double NoteOn found ..."}};
inline constexpr Text kDoubleNoteOff{De{"Doppeltes NoteOff gefunden ..."},
                                     En{"Double NoteOff found ..."}};
inline constexpr Text kMissingNoteOn{De{"Fehlendes NoteOn gefunden ..."},
                                     En{"Missing NoteOn found ..."}};
inline constexpr Text kContinueToShow{De{"Diese Fehlermeldung weiterhin anzeigen?"},
                                      En{"Continue to show this error message?"}};
inline constexpr Text kChannelWord{De{"Kanal "}, En{"Channel "}};
inline constexpr Text kNoteWord{De{", Note "}, En{", note "}};

// Transposing.
inline constexpr Text kNoSemitones{De{"Bitte geben Sie die Anzahl der Halbtöne an."},
                                   En{"Please enter the semitones value"}};
inline constexpr Text kCannotTranspose{De{"Dieser Midikanal kann nicht transponiert werden."},
                                       En{"This MIDI channel can't be transposed."}};

/// Why the channel with this label is not transposed: it has no notes.
std::string CannotTranspose(Language language, std::string_view label);

} // namespace tracksmith::editing::texts
