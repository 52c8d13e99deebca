#pragma once

#include "base/text.h"

/// Texts of the importers.
namespace tracksmith::instruments::texts {

inline constexpr Text kImportTooLarge{De{"Die Datei ist zu groß (höchstens 8 MB)."},
                                      En{"The file is too large (8 MB at most)."}};
inline constexpr Text kImportNotText{De{"Die Datei ist kein Text in UTF-8 oder Latin-1."},
                                     En{"The file is not text in UTF-8 or Latin-1."}};
inline constexpr Text kImportNoVoices{De{"Die Datei enthält keine Klangnamen."},
                                      En{"The file holds no voice names."}};
inline constexpr Text kImportTooMany{
    De{"Die Datei ergibt zu viele Klänge (höchstens 131072 insgesamt, 65536 je Instrument)."},
    En{"The file gives too many voices (131072 at most, 65536 for one instrument)."}};
inline constexpr Text kImportTooManyReferences{De{"Die Datei verweist zu oft auf Klanglisten."},
                                               En{"The file refers to voice lists too often."}};
inline constexpr Text kReferenceDepth{
    De{"Klanglisten verweisen im Kreis oder zu tief aufeinander."},
    En{"Voice lists refer to each other in a circle or too deeply."}};

// MIDNAM.
inline constexpr Text kXmlFault{De{"Die Datei ist kein gültiges XML."},
                                En{"The file is not valid XML."}};
inline constexpr Text kXmlEntities{De{"Die Datei erklärt eigene XML-Entitäten; das ist nicht "
                                      "erlaubt."},
                                   En{"The file declares XML entities of its own, which is not "
                                      "allowed."}};
inline constexpr Text kNotMidnam{De{"Die Datei ist keine MIDNAM-Datei."},
                                 En{"The file is not a MIDNAM file."}};
inline constexpr Text kMidnamNumber{
    De{"Programme und Banknummern müssen ganze Zahlen von 0 bis 127 sein."},
    En{"Programs and bank numbers must be whole numbers from 0 to 127."}};

// Instrument definitions.
inline constexpr Text kInsLineTooLong{De{"Die Zeile ist zu lang (höchstens 4096 Bytes)."},
                                      En{"The line is too long (4096 bytes at most)."}};
inline constexpr Text kInsLine{De{"Die Zeile passt nicht in eine Instrumentdefinition."},
                               En{"The line does not belong into an instrument definition."}};
inline constexpr Text kInsNoSection{
    De{R"(Die Datei hat weder einen Abschnitt ".Patch Names" noch ".Instrument Definitions".)"},
    En{R"(The file has no section ".Patch Names" or ".Instrument Definitions".)"}};
inline constexpr Text kInsProgram{De{"Die Programmnummer muss eine ganze Zahl von 0 bis 127 sein."},
                                  En{"The program must be a whole number from 0 to 127."}};
inline constexpr Text kInsBank{De{"Die Banknummer passt nicht zur Art der Bankwahl."},
                               En{"The bank number does not fit the bank select method."}};
inline constexpr Text kInsMethod{De{"BankSelMethod muss 0, 1, 2 oder 3 sein."},
                                 En{"BankSelMethod must be 0, 1, 2 or 3."}};

/// Family of the voices of a file that does not group them.
inline constexpr std::string_view kImportedFamily = "Voices";

} // namespace tracksmith::instruments::texts
