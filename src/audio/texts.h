#pragma once

#include "base/text.h"

/// Every text of the built-in instrument and of the audio export. A path follows after a colon.
namespace tracksmith::audio::texts {

inline constexpr Text kNoSoundfont{
    De{"Für das eingebaute Instrument ist keine SoundFont-Datei (*.sf2, *.sf3) installiert!"},
    En{"No SoundFont file (*.sf2, *.sf3) is installed for the built-in instrument!"}};
inline constexpr Text kSoundfontMissing{De{"Die SoundFont-Datei wurde nicht gefunden:"},
                                        En{"The SoundFont file was not found:"}};
inline constexpr Text kSoundfontBroken{De{"Die Datei ist kein lesbarer SoundFont:"},
                                       En{"The file is no readable SoundFont:"}};
inline constexpr Text kNoSynth{De{"Das eingebaute Instrument konnte nicht gestartet werden!"},
                               En{"The built-in instrument could not be started!"}};
inline constexpr Text kNoSoundOutput{De{"Die Tonausgabe konnte nicht gestartet werden!"},
                                     En{"The sound output could not be started!"}};
inline constexpr Text kSilent{De{"Kein Audiogerät gefunden: Das eingebaute Instrument ist stumm."},
                              En{"No sound device: the built-in instrument is silent."}};
inline constexpr Text kCannotCreate{De{"Die Audiodatei kann nicht angelegt werden:"},
                                    En{"The audio file cannot be created:"}};
inline constexpr Text kCannotWrite{
    De{"Die Audiodatei konnte nicht vollständig geschrieben werden:"},
    En{"The audio file could not be written completely:"}};
inline constexpr Text kTooLong{De{"Der Song ist zu lang für eine WAV-Datei (höchstens 4 GB)!"},
                               En{"The song is too long for a WAV file (4 GB at most)!"}};

} // namespace tracksmith::audio::texts
