#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tracksmith {

/// How the bytes of a song's texts are to be read for display. Utf8 falls back to Windows-1252.
enum class TextEncoding { Utf8, Windows1252, Windows1250, Dos850, MacRoman };

/// True when `bytes` are well-formed UTF-8 (no overlong forms, no surrogates; RFC 3629).
bool IsUtf8(std::string_view bytes);

/// Text from a file, port or device as UTF-8 that is safe to show: decoded as `encoding`, control
/// characters replaced by spaces, cut after `maxCharacters` characters (an ellipsis follows).
/// Bytes that are not valid UTF-8 are read as Windows-1252. Never changes the song's own bytes.
std::string DisplayText(std::string_view bytes, TextEncoding encoding = TextEncoding::Utf8,
                        std::size_t maxCharacters = 200);

/// `path` text for messages: UTF-8, control characters replaced, never cut.
std::string DisplayPath(std::string_view utf8Path);

} // namespace tracksmith
