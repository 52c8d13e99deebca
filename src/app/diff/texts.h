#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/text.h"

/// Texts about the differences between two songs.
namespace tracksmith::diff::texts {

/// In the order of Kind: one, several.
struct KindWords {
    std::string_view name; ///< For programs.
    Text one;
    Text several;
};
inline constexpr std::array<KindWords, 6> kKindWords{{
    {"voices", Text{De{"Klang"}, En{"Voice"}}, Text{De{"Klänge"}, En{"Voices"}}},
    {"controllers", Text{Both{"Controller"}}, Text{De{"Controller"}, En{"Controllers"}}},
    {"notes", Text{De{"Note"}, En{"Note"}}, Text{De{"Noten"}, En{"Notes"}}},
    {"messages", Text{De{"Meldung"}, En{"Message"}}, Text{De{"Meldungen"}, En{"Messages"}}},
    {"tempo", Text{Both{"Tempo"}}, Text{Both{"Tempo"}}},
    {"text", Text{Both{"Text"}}, Text{De{"Texte"}, En{"Text"}}},
}};

/// In the order of Change, for programs.
inline constexpr std::array<std::string_view, 9> kChangeNames{
    "changed", "added", "removed", "endsMoved", "transposed", "moved", "cut", "copied", "inserted"};

inline constexpr Text kKeyPressure{De{"Tastendruck, Taste %1"}, En{"Key pressure, key %1"}};

inline constexpr Text kTempo{Both{"%1 BPM"}};
inline constexpr Text kTimeSignature{De{"Takt %1"}, En{"Time signature %1"}};
inline constexpr Text kKeySignature{De{"Tonart %1"}, En{"Key %1"}};
inline constexpr Text kSongEnd{De{"Ende bei %1"}, En{"End at %1"}};
inline constexpr Text kTicks{De{"%1 Ticks je Viertel"}, En{"%1 ticks a quarter note"}};

inline constexpr Text kTimes{De{"%1, %2-mal"}, En{"%1, %2 times"}};
inline constexpr Text kAllBy{De{"alle um %1"}, En{"all by %1"}};
inline constexpr Text kAndMore{De{"%1 und anderes"}, En{"%1 and others"}};
inline constexpr Text kNothing{Both{"–"}};
inline constexpr Text kAlsoHere{De{"auch hier gesetzt"}, En{"set here too"}};
inline constexpr Text kNotHere{De{"hier nicht mehr gesetzt"}, En{"not set here any more"}};
inline constexpr Text kMoved{De{"verschoben von %1"}, En{"moved from %1"}};

inline constexpr Text kOneNote{De{"1 Note"}, En{"1 note"}};
inline constexpr Text kNotes{De{"%1 Noten"}, En{"%1 notes"}};
inline constexpr Text kOtherEnds{De{"anderes Ende"}, En{"other end"}};
inline constexpr Text kTransposed{De{"%1 Halbtöne"}, En{"%1 semitones"}};
inline constexpr Text kVelocity{De{"Anschlag %1"}, En{"Velocity %1"}};
inline constexpr Text kRelease{De{"Loslassen %1"}, En{"Release velocity %1"}};

inline constexpr Text kStretch{De{"%1 bis %2"}, En{"%1 to %2"}};
inline constexpr Text kCut{De{"herausgeschnitten"}, En{"cut out"}};
inline constexpr Text kCopiedTo{De{"kopiert nach %1"}, En{"copied to %1"}};
inline constexpr Text kInserted{De{"eingefügt bis %1"}, En{"put in up to %1"}};
inline constexpr Text kWholeSong{De{"Ganzer Song"}, En{"Whole song"}};
inline constexpr Text kChannel{De{"Kanal %1"}, En{"Channel %1"}};
inline constexpr Text kNoSong{De{"Das ist kein Song."}, En{"That is no song."}};
inline constexpr Text kSame{De{"Kein Unterschied."}, En{"No difference."}};

} // namespace tracksmith::diff::texts
