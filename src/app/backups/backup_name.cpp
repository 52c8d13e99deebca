#include "app/backups/backup_name.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "base/display_text.h"
#include "base/system/file_io.h"

namespace tracksmith::backups {
namespace {

constexpr std::string_view kExtension = ".mid";
// With a line in front of it.
constexpr std::string_view kStampForm = "_dddddddd_dddddd";
// A file name may have 255 bytes; stamp, number and extension take up to 32.
constexpr std::size_t kMostNameBytes = 200;
constexpr std::size_t kMostNumberDigits = 6;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool EndsWithStamp(std::string_view text) {
    if (text.size() <= kStampForm.size()) {
        return false;
    }
    text.remove_prefix(text.size() - kStampForm.size());
    return std::equal(text.begin(), text.end(), kStampForm.begin(),
                      [](char is, char form) { return form == 'd' ? IsDigit(is) : is == form; });
}

BackupName Split(std::string_view text, int number) {
    const std::size_t name = text.size() - kStampForm.size();
    return {std::string(text.substr(0, name)), std::string(text.substr(name + 1)), number};
}

// The number behind the last line; 0 where there is none.
int NumberBehind(std::string_view text, std::size_t line) {
    const std::string_view digits = text.substr(line + 1);
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    return whole && digits.size() <= kMostNumberDigits && digits.front() != '0' ? number : 0;
}

bool IsRefused(char character) {
    constexpr std::string_view kRefused = "<>:\"/\\|?*";
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F || kRefused.find(character) != std::string_view::npos;
}

// Names of devices on Windows, whatever follows behind a dot.
bool IsDevice(std::string_view name) {
    std::string upper(name.substr(0, name.find('.')));
    std::ranges::transform(upper, upper.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                    : character;
    });
    constexpr std::array<std::string_view, 4> kDevices{"CON", "PRN", "AUX", "NUL"};
    const bool port = upper.size() == 4 && (upper.starts_with("COM") || upper.starts_with("LPT")) &&
                      IsDigit(upper.back());
    return port || std::ranges::find(kDevices, upper) != kDevices.end();
}

// At the start of a character of UTF-8.
std::string Shortened(std::string name) {
    if (name.size() > kMostNameBytes) {
        std::size_t end = kMostNameBytes;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
            --end;
        }
        name.resize(end);
    }
    return name;
}

} // namespace

std::string BackupName::FileName() const {
    std::string name = song + "_" + stamp;
    if (number > 1) {
        name += "_" + std::to_string(number);
    }
    return name.append(kExtension);
}

std::strong_ordering BackupName::AgeOrder(const BackupName& other) const {
    const auto order = stamp.compare(other.stamp) <=> 0;
    return std::is_eq(order) ? number <=> other.number : order;
}

std::optional<BackupName> ParseBackupName(std::string_view fileName) {
    if (!fileName.ends_with(kExtension)) {
        return std::nullopt;
    }
    fileName.remove_suffix(kExtension.size());
    if (EndsWithStamp(fileName)) {
        return Split(fileName, 1);
    }
    const std::size_t line = fileName.rfind('_');
    if (line == std::string_view::npos || line + 1 == fileName.size()) {
        return std::nullopt;
    }
    const int number = NumberBehind(fileName, line);
    const std::string_view rest = fileName.substr(0, line);
    return number > 1 && EndsWithStamp(rest) ? std::optional(Split(rest, number)) : std::nullopt;
}

std::string SongNameOf(const std::filesystem::path& file, std::string_view unnamed) {
    std::string name = DisplayPath(system::PathText(file.stem())); // UTF-8, whatever it was
    std::ranges::replace_if(name, IsRefused, '_');
    name = Shortened(std::move(name));
    if (name.empty() || name == "." || name == "..") {
        return std::string(unnamed);
    }
    return IsDevice(name) ? "_" + name : name;
}

std::string StampOf(std::time_t time) {
    std::array<char, 16> text{};
    const std::tm* local = std::localtime(&time);
    const std::size_t length =
        local == nullptr ? 0 : std::strftime(text.data(), text.size(), "%Y%m%d_%H%M%S", local);
    return length == 0 ? "19700101_000000" : std::string(text.data(), length);
}

} // namespace tracksmith::backups
