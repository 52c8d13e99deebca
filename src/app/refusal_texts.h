#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/text.h"

/// What is told about a refused file, and what files are that are no songs.
namespace tracksmith::app::texts {

inline constexpr Text kTypeRmid{De{"ein Song in einer RIFF-Hülle (.rmi)"},
                                En{"a song in a RIFF wrapper (.rmi)"}};
inline constexpr Text kTypeRiff{De{"eine andere RIFF-Datei"}, En{"another RIFF file"}};
inline constexpr Text kTypeSound{De{"eine Tonaufnahme"}, En{"a sound recording"}};
inline constexpr Text kTypeArchive{De{"ein Archiv, das erst entpackt werden muss"},
                                   En{"an archive, which must be unpacked first"}};
inline constexpr Text kTypeDocument{De{"ein Dokument"}, En{"a document"}};
inline constexpr Text kTypePicture{De{"ein Bild"}, En{"a picture"}};
inline constexpr Text kTypeProgram{De{"ein Programm"}, En{"a program"}};
inline constexpr Text kTypeMarkup{De{"eine Web- oder XML-Seite"}, En{"a web or XML page"}};
inline constexpr Text kTypeText{De{"ein Text"}, En{"a text"}};
inline constexpr Text kTypeZeros{De{"eine Datei, die nur mit Nullen anfängt"},
                                 En{"a file that begins with nothing but zeros"}};

inline constexpr Text kEmptyFile{De{"Die Datei ist leer."}, En{"The file is empty."}};
inline constexpr Text kNoSong{De{"Die Datei ist kein Standard MIDI File."},
                              En{"The file is no Standard MIDI File."}};
inline constexpr Text kTooLargeFile{De{"Die Datei ist größer als 2 GB, so groß ist kein Song."},
                                    En{"The file is larger than 2 GB; no song is that large."}};
inline constexpr Text kDamagedHeader{De{"Der Kopf der Datei ist beschädigt."},
                                     En{"The header of the file is damaged."}};
inline constexpr Text kNoTracks{De{"Die Datei enthält keine Spuren."},
                                En{"The file holds no tracks."}};

// What stands at a damaged place; completes "in track 3, byte 120, …".
inline constexpr Text kValueWithoutCommand{De{"steht ein Wert ohne Befehl"},
                                           En{"a value stands without a command"}};
inline constexpr Text kValueOver127{De{"steht ein Wert über 127"}, En{"a value is above 127"}};
inline constexpr Text kLongEndOfTrack{De{"ist das Spurende fehlerhaft"},
                                      En{"the end of the track is faulty"}};
inline constexpr Text kWrongLength{De{"kann eine Länge oder Zeit nicht stimmen"},
                                   En{"a length or time cannot be right"}};
inline constexpr Text kUnknownCommand{De{"steht ein Befehl, den es in Dateien nicht gibt"},
                                      En{"a command stands that files do not have"}};

/// `type` names what the file is instead of a song.
std::string IsOtherType(Language language, const Text& type);

/// The file has only so many bytes.
std::string HasOnlyBytes(Language language, std::size_t bytes);

/// A song begins only at byte `at`.
std::string BytesBefore(Language language, std::size_t at);

/// `promised` tracks should follow the header, `found` of them do.
std::string TracksMissing(Language language, std::uint32_t promised, std::uint32_t found);

/// `track` (from 1) should begin at byte `at`, and does not.
std::string NoTrackHere(Language language, std::uint32_t track, std::uint64_t at);

/// The file ends inside `track` (from 1).
std::string CutOff(Language language, std::uint32_t track);

/// `track` (from 1) is damaged at byte `at`; `what` is one of the texts above.
std::string DamagedTrack(Language language, std::uint32_t track, std::uint64_t at,
                         const Text& what);

/// The song takes `needed` bytes and may take `allowed`.
std::string NotEnoughMemory(Language language, std::uint64_t needed, std::uint64_t allowed);

} // namespace tracksmith::app::texts
