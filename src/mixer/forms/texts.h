#pragma once

#include <cstddef>
#include <optional>

#include "base/forms/qt_text.h"
#include "base/text.h"

#include "mixer/controls.h"

/// Every text of the strips.
namespace tracksmith::forms::mixer_texts {

inline constexpr Text kMixer{De{"Mischpult"}, En{"Mixer"}};
inline constexpr Text kMaster{Both{"Master"}};
inline constexpr Text kMasterVolume{De{"Gesamtlautstärke"}, En{"Master volume"}};
inline constexpr Text kLinked{De{"Gekoppelt"}, En{"Linked"}};
inline constexpr Text kLinkedHint{
    De{"Der Master bewegt die Lautstärken aller Kanäle im gleichen Verhältnis"},
    En{"The master moves the volumes of all channels in proportion"}};
inline constexpr Text kLink{De{"Koppeln"}, En{"Link"}};
inline constexpr Text kResetAll{De{"Reset"}, En{"Reset all"}};
inline constexpr Text kResetAllHint{De{"Alle Regler und Noten wie in der Datei"},
                                    En{"All controls and notes as in the file"}};
inline constexpr Text kUnmute{De{"Alle hören"}, En{"Unmute"}};
inline constexpr Text kUnmuteHint{De{"Alle Kanäle wieder hören"}, En{"Hear all channels again"}};
inline constexpr Text kSoloOff{De{"Solo aus"}, En{"Solo off"}};

inline constexpr Text kDrums{Both{"drums"}};
inline constexpr Text kNotInUse{De{"nicht benutzt"}, En{"not in use"}};
inline constexpr Text kNoVoice{Both{"–"}};
inline constexpr Text kVoice{De{"Klang"}, En{"Voice"}};
inline constexpr Text kSimilar{De{" (ähnlich)"}, En{" (similar)"}};
inline constexpr Text kVoiceHint{De{"Klick: Klang wählen"}, En{"Click: choose the voice"}};
inline constexpr Text kBringOut{De{"Hervorheben"}, En{"Bring out"}};
inline constexpr Text kChannelHint{
    De{"Klick: den Kanal in der Übersicht hervorheben oder nicht mehr"},
    En{"Click: bring the channel out in the overview, or no longer"}};
inline constexpr Text kMute{De{"Stumm"}, En{"Mute"}};
inline constexpr Text kSolo{Both{"Solo"}};
inline constexpr Text kTranspose{De{"Transponierung"}, En{"Transposition"}};
inline constexpr Text kTransposeSong{De{"Transponierung des Songs"},
                                     En{"Transposition of the song"}};
inline constexpr Text kTransposeHint{
    De{"Mausrad, Ziehen oder Pfeiltasten: Halbtöne; Doppelklick: wie in der Datei"},
    En{"Wheel, drag or arrow keys: semitones; double click: as in the file"}};

inline constexpr Text kNotInSong{De{"Kommt in diesem Song nicht vor"}, En{"Not in this song"}};
inline constexpr Text kNotYetInSong{De{"Der Song setzt es erst später"},
                                    En{"The song sets it later only"}};
inline constexpr Text kInsertAtStart{De{"Am Anfang einsetzen"}, En{"Insert at start"}};
inline constexpr Text kReset{De{"Zurück zum Wert der Datei"}, En{"Reset to the file's value"}};
inline constexpr Text kResetChannel{De{"Ganzen Kanal zurücksetzen"}, En{"Reset the whole channel"}};
inline constexpr Text kSameForAll{De{"Gleich für alle Kanäle"}, En{"Same for all channels"}};
inline constexpr Text kTypeValue{De{"Wert eingeben"}, En{"Type a value"}};
inline constexpr Text kScaleAll{De{"Alle um gleich viel ändern"},
                                En{"Scale all of them by the same amount"}};

/// Full and short name of a control.
QString ControlName(mixer::Control control, Language language);
QString ShortName(mixer::Control control, Language language);

/// A value as it is shown: "L12", "C" and "R12" for the panorama, with a sign for controls with a
/// middle.
QString ValueText(mixer::Control control, int value, Language language);

/// The value (0-127) that somebody has typed in such a way, or as a plain number; none for other
/// text.
std::optional<int> TypedValue(mixer::Control control, const QString& text, Language language);

/// "volume changes 14 times".
QString ChangesTimes(mixer::Control control, std::size_t changes, Language language);

/// "3 soloed".
QString Soloed(std::size_t channels, Language language);

/// "channel 3, Grand Piano", behind the name of each control of a strip.
QString ChannelWords(int channel, const QString& voice, Language language);

/// A number of semitones with its sign.
QString Semitones(int semitones);

} // namespace tracksmith::forms::mixer_texts
