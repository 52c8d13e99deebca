#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/display_text.h"

/// Reading texts and numbers of foreign files.
namespace tracksmith::instruments {

/// A file as text: its bytes without a byte order mark, and how they are to be read.
struct ImportText {
    std::string_view bytes;
    TextEncoding encoding = TextEncoding::Utf8;
};

/// `bytes` as text, UTF-8 when they are well-formed and Latin-1 (Windows-1252) when not. Throws
/// VoiceFileError for more than kMostImportBytes and for NUL bytes, which UTF-16 would have too.
ImportText ReadImportText(std::span<const std::uint8_t> bytes);

/// A name as a table can hold it: UTF-8, no control characters, no blanks around it, at most
/// 100 characters.
std::string ImportedName(std::string_view name, TextEncoding encoding);

/// `text` as a whole decimal number, blanks around it allowed; empty for anything else and for
/// numbers above `most`.
std::optional<unsigned> ImportedNumber(std::string_view text, unsigned most);

/// `text` without the blanks and tabs around it.
std::string_view Trimmed(std::string_view text);

/// Line, counted from 1, in which the byte `offset` of `text` stands.
std::size_t LineAt(std::string_view text, std::size_t offset);

} // namespace tracksmith::instruments
