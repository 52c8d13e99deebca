#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

/// Texts of opening and saving files. The wordings are fixed, misspellings included.
namespace tracksmith::app::texts {

inline constexpr Text kLeadInLosesChanges{
    De{"Was seit dem Vorbereiten von Hand geändert wurde, geht dabei verloren. Trotzdem einen "
       "Vortakt einsetzen?"},
    En{"What was changed by hand since the song was prepared will be lost. Insert a lead-in "
       "measure nevertheless?"}};
inline constexpr Text kBufferMemory{De{"Speicherzuordnungsfehler: Bitte mehr Speicher!"},
                                    En{"Error allocating memory!"}};
inline constexpr Text kOpenFailed{De{"Fehler beim Zugriff auf der Datei"},
                                  En{"Error opening the midi file"}};
inline constexpr Text kTooShort{De{"Fehler in der Mididatei: Datei zu kurz!"},
                                En{"Error in midifile: file too short!"}};
inline constexpr Text kSaveFailed{De{"Fehler beim Schreiben der Datei "},
                                  En{"Error writing the midi file "}};

/// The open error, naming the file.
std::string OpenFailed(Language language, std::string_view name);

/// No file could be created for writing.
std::string CreateFailed(Language language, std::string_view name);

/// Only `written` of `size` bytes could be saved.
std::string SavedIncompletely(Language language, std::string_view name, std::size_t written,
                              std::size_t size);

/// Writing failed.
std::string SaveFailed(Language language, std::string_view name);

inline constexpr Text kIsOriginal{
    De{"Das Ergebnis käme an die Stelle eines der Originale; nichts wurde geschrieben."},
    En{"The result would take the place of one of the originals; nothing was written."}};

/// The question before a file is overwritten.
std::string OverwriteQuestion(Language language, std::string_view name);

inline constexpr Text kNewSong{De{"Neuer Song"}, En{"New Song"}};

/// Name of a channel's track in a new song; `number` counts from 1.
std::string ChannelName(Language language, int number);

inline constexpr Text kInserted{De{"eingesetzt"}, En{"inserted"}};
inline constexpr Text kRemoved{De{"entfernt"}, En{"removed"}};
inline constexpr Text kFound{De{"gefunden"}, En{"found"}};

/// The line that tells for which instrument a song was prepared; `what` lists what was done and is
/// empty when nothing had to be.
std::string PreparedFor(Language language, std::string_view instrument, std::string_view what);

/// A sentence about `count` things that preparing did for the sound: `kind` is the number of their
/// KeptKind, `channels` count from 1.
std::string Kept(Language language, std::size_t kind, std::int64_t count,
                 const std::vector<int>& channels);

/// The end of a list of which `number` entries are not shown.
std::string AndMore(Language language, std::size_t number);

} // namespace tracksmith::app::texts
