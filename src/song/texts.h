#pragma once

#include "base/text.h"

/// Texts of the song core. The wordings are fixed, misspellings included.
namespace tracksmith::song::texts {

inline constexpr Text kOutOfMemory{De{"Speicherzuordnungsfehler: Bitte mehr Speicher!"},
                                   En{"Error allocating memory!"}};

// Reading: header.
inline constexpr Text kHeader1{Both{"Error in midi file header - 1!"}};
inline constexpr Text kHeader2{Both{"Error in midi file header - 2!"}};
inline constexpr Text kMidiFile{Both{"Error in midifile!"}};

// Reading: pieces of composed messages.
inline constexpr Text kTrackHeader{De{"Fehler im TrackHeader "}, En{"Error in track header "}};
inline constexpr Text kTrackHeaderAt{De{" bei "}, En{" at "}};
// Two German wordings share one English wording, deliberately.
inline constexpr Text kInvalidOffset{De{"Fehler in der MidiDatei: \"ungültiger Offset\"!"},
                                     En{"Error in midifile: \"PrevCommand < $80\"!"}};
inline constexpr Text kNoRunningStatus{De{"Fehler in der MidiDatei: \"PrevCommand < $80\"!"},
                                       En{"Error in midifile: \"PrevCommand < $80\"!"}};
inline constexpr Text kRunningStatusTooHigh{
    Both{"Fehler in der MidiDatei - PrevCommand >= $F0!\nPrevCommand: "}};
inline constexpr Text kDataTooLarge{De{"Fehler im Midifile bei Position: "},
                                    En{"Error in Midifile at position: "}};
inline constexpr Text kDataTooLargeValue{De{"\nWert1 = "}, En{"\nValue1 = "}};
inline constexpr Text kDataTooLargeEnd{De{"\nEs dürfte nicht größer als 127 sein!"},
                                       En{"\nshouldn't be greater than 127!"}};

// Reading: events, first pass.
inline constexpr Text kCommandF1ToF6{Both{"Error in midifile - Command is $F1 to $F6!"}};
inline constexpr Text kCommandFE{Both{"Error in midifile - Command = $FE!"}};
inline constexpr Text kEndOfTrackLength{Both{"Error in midifile - Cmd $2F with length <> 0!"}};

// Reading: events, second pass.
inline constexpr Text kTrackHeader1{Both{"Error in track header - 1!"}};
inline constexpr Text kErrorA{Both{"Error in midifile - A!"}};
inline constexpr Text kErrorB{Both{"Error in midifile - B!"}};
inline constexpr Text kErrorC{Both{"Error in midifile - C!"}};
inline constexpr Text kErrorD{Both{"Error in midifile - D!"}};
inline constexpr Text kErrorE{Both{"Error in midifile - E!"}};

// The balance of note-ons and note-offs, in pieces around the number.
inline constexpr Text kFound{De{"Es wurden "}, En{"Found "}};
inline constexpr Text kOffsWithoutOns{De{" Note-Offs ohne Note-Ons gefunden,"},
                                      En{" Note-Offs without Note-Ons,"}};
inline constexpr Text kOnsWithoutOffs{De{" Note-Ons ohne Note-Offs gefunden,"},
                                      En{" Note-Ons without Note-Offs,"}};

// Writing.
inline constexpr Text kCoding{De{"Fehler bei der Kodierung der MidiDatei!"},
                              En{"Error coding the midi file!"}};

} // namespace tracksmith::song::texts
