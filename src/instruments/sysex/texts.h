#pragma once

#include "base/text.h"

namespace tracksmith::instruments::texts {

// When a step of the preparation is taken.
inline constexpr Text kWithGmBeforeGs{De{"nur mit GM vor GS"}, En{"only with GM before GS"}};
inline constexpr Text kWithKorgEqualizer{De{"nur mit Korg-Equalizern"},
                                         En{"only with Korg equalizers"}};
inline constexpr Text kWithYamahaDsps{De{"nur mit Yamaha-DSPs"}, En{"only with Yamaha DSPs"}};
inline constexpr Text kWithoutMasterEq{De{"nur ohne Master-EQ"}, En{"only without master EQ"}};
inline constexpr Text kWithoutVocalHarmony{
    De{"nur ohne Vocal Harmony, oder bei „nur mit Liedtext“ in Songs ohne"},
    En{"only without vocal harmony, or with \"only with lyrics\" in songs without"}};
inline constexpr Text kWithMotifDsps{De{"nur mit Motif-DSPs"}, En{"only with Motif DSPs"}};
inline constexpr Text kUnlessWithoutGmReset{De{"nicht mit „ohne GM-Reset“"},
                                            En{"not with \"without GM reset\""}};

// Families and manufacturers.
inline constexpr Text kNoFamily{De{"keine"}, En{"none"}};
inline constexpr Text kUniversal{De{"universell"}, En{"universal"}};
inline constexpr Text kOtherMaker{De{"anderer Hersteller"}, En{"other maker"}};
inline constexpr Text kUnknownMaker{De{"Hersteller "}, En{"manufacturer "}};
inline constexpr Text kReservedId{De{"nicht kommerziell (7D)"}, En{"non-commercial (7D)"}};

// Pieces of descriptions.
inline constexpr Text kEmpty{De{"leere Meldung"}, En{"empty message"}};
inline constexpr Text kDevice{De{", Gerät "}, En{", device "}};
inline constexpr Text kModel{De{", Modell "}, En{", model "}};
inline constexpr Text kAddress{De{"Adresse "}, En{"address "}};
inline constexpr Text kValue{De{", Wert "}, En{", value "}};
inline constexpr Text kChannel{De{"Kanal "}, En{"channel "}};
inline constexpr Text kPart{De{"Part "}, En{"part "}};
inline constexpr Text kDrumKey{De{", Taste "}, En{", key "}};
inline constexpr Text kWrongChecksum{De{", falsche Prüfsumme"}, En{", wrong checksum"}};
inline constexpr Text kNotClosed{De{", nicht abgeschlossen"}, En{", not terminated"}};
inline constexpr Text kBytes{De{" Bytes"}, En{" bytes"}};
inline constexpr Text kBulkDump{De{"Datenblock"}, En{"bulk dump"}};
inline constexpr Text kRequest{De{"Anforderung"}, En{"request"}};

} // namespace tracksmith::instruments::texts
