#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace tracksmith::instruments {

/// How an instrument definition's bank numbers are sent (`BankSelMethod`).
enum class BankSelMethod : std::uint8_t {
    Both = 0, ///< 128 times controller 0 plus controller 32
    Msb = 1,  ///< controller 0 alone
    Lsb = 2,  ///< controller 32 alone
    None = 3  ///< by program changes, no controller
};

/// One list of the section ".Patch Names". Texts are parts of the file.
struct InsPatchList {
    /// Names by program; of several for one program the first.
    std::map<std::uint8_t, std::string_view> names;
    /// Another list that has the names which this one lacks; empty without one.
    std::string_view basedOn;
    std::size_t line = 0;
};

/// `*` in place of a bank or a program.
inline constexpr std::int32_t kInsAny = -1;

/// `Patch[bank]=list`.
struct InsBank {
    std::int32_t bank = kInsAny;
    std::string_view list;
    std::size_t line = 0;
};

/// One instrument of the section ".Instrument Definitions".
struct InsDefinition {
    std::string_view name;
    BankSelMethod method = BankSelMethod::Both;
    std::vector<InsBank> banks;
    /// `Drum[bank,program]`: whether those are kits.
    std::map<std::pair<std::int32_t, std::int32_t>, bool> drums;
};

/// Orders names of lists, capital and small letters (ASCII) alike.
struct InsNameLess {
    bool operator()(std::string_view a, std::string_view b) const;
};

/// The parts of a file of instrument definitions that voices come from.
struct InsFile {
    std::map<std::string_view, InsPatchList, InsNameLess> lists;
    std::vector<InsDefinition> definitions;
};

/// Takes the text of a file of instrument definitions apart; key names of other software are passed
/// over; section heads, keys and names of lists are the same in capital and small letters. The text
/// must outlive the result. Throws VoiceFileError, also for a text without any known section.
InsFile ParseInsFile(std::string_view text);

} // namespace tracksmith::instruments
