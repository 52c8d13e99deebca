#include "app/backups/backup_index.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/tab_lines.h"

#include "app/backups/backup_name.h"

namespace tracksmith::backups {
namespace {

constexpr std::string_view kFileName = "index.tsv";
constexpr std::string_view kDigits = "0123456789ABCDEF";

// Whatever would end a field, in hexadecimal digits behind a per cent sign.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F || character == '%') {
            escaped += {'%', kDigits[byte >> 4U], kDigits[byte & 0x0FU]};
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const char first = text.front();
        if (first != '%') {
            plain += first;
            text.remove_prefix(1);
            continue;
        }
        const std::size_t high = text.size() < 3 ? kDigits.npos : kDigits.find(text[1]);
        const std::size_t low = text.size() < 3 ? kDigits.npos : kDigits.find(text[2]);
        if (high == kDigits.npos || low == kDigits.npos) {
            return std::nullopt;
        }
        plain += static_cast<char>(high * kDigits.size() + low);
        text.remove_prefix(3);
    }
    return plain;
}

std::filesystem::path PathOfText(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

} // namespace

// Each line ends with a mark, so that one which was cut off is known.
BackupIndex ReadBackupIndex(const std::filesystem::path& folder) {
    BackupIndex index;
    const auto bytes = system::ReadRegularFile(folder / kFileName);
    if (!bytes) {
        return index;
    }
    std::string_view rest(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    while (!rest.empty()) {
        const auto fields = SplitColumns<3>(TakeLine(rest));
        if (!fields || fields->back() != "." || !ParseBackupName(fields->front())) {
            continue;
        }
        if (const auto path = Unescaped((*fields)[1])) {
            index.insert_or_assign(std::string(fields->front()), PathOfText(*path));
        }
    }
    return index;
}

system::WriteResult WriteBackupIndex(const std::filesystem::path& folder,
                                     const BackupIndex& index) {
    std::string text;
    for (const auto& [name, original] : index) {
        text += name + "\t" + Escaped(system::PathText(original)) + "\t.\n";
    }
    return system::WriteFileAtomically(
        folder / kFileName,
        std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

} // namespace tracksmith::backups
