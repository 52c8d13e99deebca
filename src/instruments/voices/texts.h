#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/text.h"

#include "instruments/catalogue.h"
#include "instruments/voices/voice.h"

/// Texts of the voice tables.
namespace tracksmith::instruments::texts {

inline constexpr Text kTableTooLarge{De{"Die Klangtabelle ist zu groß (höchstens 8 MB)."},
                                     En{"The voice table is too large (8 MB at most)."}};
inline constexpr Text kTableUnreadable{De{"Die Klangtabelle kann nicht gelesen werden."},
                                       En{"The voice table cannot be read."}};
inline constexpr Text kTablesUnreadable{
    De{"Der Ordner der Klangtabellen kann nicht gelesen werden."},
    En{"The folder of voice tables cannot be read."}};
inline constexpr Text kTableNoMemory{De{"Für die Klangtabelle fehlt Speicher."},
                                     En{"There is no memory for the voice table."}};
inline constexpr Text kTableHeader{
    De{"Die erste Zeile der Klangtabelle muss die Spalten family, category, msb, lsb, program und "
       "name nennen, durch Tabulatoren getrennt."},
    En{"The first line of the voice table must name the columns family, category, msb, lsb, "
       "program and name, separated by tabs."}};
inline constexpr Text kTableTruncated{De{"Die letzte Zeile der Klangtabelle ist nicht zu Ende."},
                                      En{"The last line of the voice table is incomplete."}};
inline constexpr Text kTooManyRows{De{"Mehr als 65536 Klänge passen nicht in eine Klangtabelle."},
                                   En{"More than 65536 voices do not fit into a voice table."}};
inline constexpr Text kTooManyFamilies{De{"Die Klänge sind nicht nach Familien geordnet."},
                                       En{"The voices are not sorted by family."}};
inline constexpr Text kLineTooLong{De{"Die Zeile ist zu lang."}, En{"The line is too long."}};
inline constexpr Text kColumnCount{De{"Die Zeile muss genau sechs Spalten haben."},
                                   En{"The line must have exactly six columns."}};
inline constexpr Text kEmptyField{De{"Familie, Kategorie und Name dürfen nicht leer sein."},
                                  En{"Family, category and name must not be empty."}};
inline constexpr Text kNotUtf8{De{"Die Zeile ist kein gültiges UTF-8."},
                               En{"The line is not valid UTF-8."}};
inline constexpr Text kControlCharacter{De{"Die Zeile enthält ein Steuerzeichen."},
                                        En{"The line contains a control character."}};
inline constexpr Text kNumberRange{
    De{"MSB, LSB und Programm müssen ganze Zahlen von 0 bis 127 sein."},
    En{"MSB, LSB and program must be whole numbers from 0 to 127."}};
inline constexpr Text kUnknownInstrument{De{"Dieses Instrument gibt es nicht."},
                                         En{"There is no such instrument."}};
inline constexpr Text kTableNotWritten{De{"Die Klangtabelle kann nicht geschrieben werden."},
                                       En{"The voice table cannot be written."}};

inline constexpr Text kLine{De{"Zeile "}, En{"Line "}};
inline constexpr Text kUnknownVoice{De{"unbekannt"}, En{"unknown"}};

/// "Line 12: …"; the text alone for line 0.
inline std::string AtLine(std::size_t line, const Text& text, Language language) {
    const std::string wording(text.In(language));
    return line == 0 ? wording
                     : std::string(kLine.In(language)) + std::to_string(line) + ": " + wording;
}

/// Short name of a common set by the instrument that stands for it: "XG", "GM2", "GM".
constexpr std::string_view SetName(InstrumentId set) {
    return set == kXgSoundset ? "XG" : set == kGm2Soundset ? "GM2" : "GM";
}

/// Whether the user's own table of `instrument` may be replaced.
inline std::string ReplaceQuestion(std::string_view instrument, Language language) {
    const std::string name(instrument);
    return language == Language::German
               ? "Für \"" + name +
                     "\" gibt es schon eine eigene Klangtabelle. Soll sie ersetzt werden?"
               : "There is a voice table of your own for \"" + name + "\". Shall it be replaced?";
}

/// "8·0·17": bank select MSB and LSB, then the program counted from 1, as lists and cards show it.
inline std::string NumbersText(VoiceNumbers numbers) {
    return std::to_string(numbers.msb) + "·" + std::to_string(numbers.lsb) + "·" +
           std::to_string(numbers.program + 1);
}

/// "unknown 8·0·17": the name of numbers that no table has.
inline std::string UnknownVoice(VoiceNumbers numbers, Language language) {
    return std::string(kUnknownVoice.In(language)) + ' ' + NumbersText(numbers);
}

/// Why a name is only similar: the numbers asked for, and those that the name belongs to.
inline std::string WhySimilar(VoiceNumbers asked, VoiceNumbers named, Language language) {
    const std::string of = NumbersText(asked);
    const std::string as = NumbersText(named);
    return language == Language::German
               ? "Das Instrument hat " + of + " nicht sicher; der Name ist der von " + as + "."
               : "The instrument is not known to have " + of + "; the name is that of " + as + ".";
}

} // namespace tracksmith::instruments::texts
