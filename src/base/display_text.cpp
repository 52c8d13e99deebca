#include "base/display_text.h"

#include <array>
#include <cstdint>
#include <limits>

#include "base/code_pages.h"

namespace tracksmith {
namespace {

// Windows-1252, 0x80 to 0x9F; the five unassigned places show the replacement character.
constexpr std::array<std::uint16_t, 32> kWindows1252{
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

constexpr char32_t kInvalid = 0xFFFFFFFF;

std::uint8_t ByteAt(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : std::uint8_t{0};
}

std::size_t SequenceLength(std::uint8_t lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Reads one code point at `at` and moves past it; kInvalid leaves `at` where it is.
char32_t NextUtf8(std::string_view bytes, std::size_t& at) {
    constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const std::uint8_t lead = ByteAt(bytes, at);
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || at + length > bytes.size()) {
        return kInvalid;
    }
    char32_t code = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const std::uint8_t next = ByteAt(bytes, at + i);
        if ((next & 0xC0) != 0x80) {
            return kInvalid;
        }
        code = (code << 6) | (next & 0x3FU);
    }
    if (code < kSmallest[length] || (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF) {
        return kInvalid;
    }
    at += length;
    return code;
}

void AppendUtf8(std::string& out, char32_t code) {
    const auto put = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

char32_t Windows1252(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80U] : byte;
}

char32_t OneByte(std::uint8_t byte, TextEncoding encoding) {
    if (byte < 0x80) {
        return byte;
    }
    switch (encoding) {
        case TextEncoding::Windows1250:
            return kWindows1250[byte - 0x80U];
        case TextEncoding::Dos850:
            return kDos850[byte - 0x80U];
        case TextEncoding::MacRoman:
            return kMacRoman[byte - 0x80U];
        default:
            return Windows1252(byte);
    }
}

// Controls and the invisible marks that could reorder or hide neighbouring text.
bool IsUnsafe(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x200B && code <= 0x200F) ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2060 && code <= 0x2069) ||
           code == 0xFEFF;
}

} // namespace

bool IsUtf8(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        if (NextUtf8(bytes, at) == kInvalid) {
            return false;
        }
    }
    return true;
}

std::string DisplayText(std::string_view bytes, TextEncoding encoding, std::size_t maxCharacters) {
    const bool utf8 = encoding == TextEncoding::Utf8 && IsUtf8(bytes);
    std::string out;
    std::size_t characters = 0;
    for (std::size_t at = 0; at < bytes.size(); ++characters) {
        if (characters == maxCharacters) {
            AppendUtf8(out, 0x2026);
            break;
        }
        const char32_t code = utf8 ? NextUtf8(bytes, at) : OneByte(ByteAt(bytes, at++), encoding);
        AppendUtf8(out, IsUnsafe(code) ? U' ' : code);
    }
    return out;
}

std::string DisplayPath(std::string_view utf8Path) {
    return DisplayText(utf8Path, TextEncoding::Utf8, std::numeric_limits<std::size_t>::max());
}

} // namespace tracksmith
