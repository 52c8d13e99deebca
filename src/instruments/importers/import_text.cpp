#include "instruments/importers/import_text.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "instruments/importers/imported_table.h"
#include "instruments/importers/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kMostNameCharacters = 100;

} // namespace

ImportText ReadImportText(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > kMostImportBytes) {
        throw VoiceFileError(texts::kImportTooLarge);
    }
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos) {
        throw VoiceFileError(texts::kImportNotText, LineAt(text, nul));
    }
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    return {text, IsUtf8(text) ? TextEncoding::Utf8 : TextEncoding::Windows1252};
}

std::string ImportedName(std::string_view name, TextEncoding encoding) {
    const std::string shown = DisplayText(name, encoding, kMostNameCharacters);
    return std::string(Trimmed(shown));
}

std::optional<unsigned> ImportedNumber(std::string_view text, unsigned most) {
    text = Trimmed(text);
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value > most) {
        return std::nullopt;
    }
    return value;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::size_t LineAt(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    return 1 + static_cast<std::size_t>(std::ranges::count(before, '\n'));
}

} // namespace tracksmith::instruments
