#include "instruments/voices/voice_table_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "instruments/voices/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kColumns = 6;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

using Fields = std::array<std::string_view, kColumns>;

// C0 controls except the tab, DEL, and the C1 controls in their UTF-8 form.
bool HasControlCharacter(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto byte = static_cast<unsigned char>(line[i]);
        if ((byte < 0x20 && byte != '\t') || byte == 0x7F) {
            return true;
        }
        if (byte == 0xC2 && i + 1 < line.size() && static_cast<unsigned char>(line[i + 1]) < 0xA0) {
            return true;
        }
    }
    return false;
}

std::optional<std::uint8_t> Number(std::string_view field) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    const bool whole = error == std::errc{} && end == field.data() + field.size();
    const bool canonical = field.size() == 1 || !field.starts_with('0');
    if (!whole || !canonical || value > 127) {
        return std::nullopt;
    }
    return static_cast<std::uint8_t>(value);
}

/// Reads one table; remembers the line for the errors.
class Reader {
public:
    explicit Reader(std::string bytes)
        : text_(std::make_unique<const std::string>(std::move(bytes))) {}

    VoiceTable Read() {
        if (text_->size() > kMostTableBytes) {
            throw VoiceFileError(texts::kTableTooLarge);
        }
        std::string_view rest = *text_;
        if (rest.starts_with(kByteOrderMark)) {
            rest.remove_prefix(kByteOrderMark.size());
        }
        if (TakeLine(rest, texts::kTableHeader) != kTableHeaderLine) {
            Fail(texts::kTableHeader);
        }
        voices_.reserve(std::min<std::size_t>(
            kMostTableRows, static_cast<std::size_t>(std::ranges::count(rest, '\n'))));
        while (!rest.empty()) {
            AddVoice(TakeLine(rest, texts::kTableTruncated));
        }
        return {std::move(text_), std::move(voices_)};
    }

private:
    [[noreturn]] void Fail(const Text& reason) const { throw VoiceFileError(reason, line_); }

    std::string_view TakeLine(std::string_view& rest, const Text& withoutEnd) {
        ++line_;
        const std::size_t end = rest.find('\n');
        if (std::min(end, rest.size()) > kMostLineBytes) {
            Fail(texts::kLineTooLong);
        }
        if (end == std::string_view::npos) {
            Fail(withoutEnd);
        }
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        return line;
    }

    Fields Split(std::string_view line) const {
        Fields fields;
        for (std::size_t column = 0; column < kColumns; ++column) {
            const std::size_t end = line.find('\t');
            if ((end == std::string_view::npos) != (column + 1 == kColumns)) {
                Fail(texts::kColumnCount);
            }
            fields[column] = line.substr(0, end);
            line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
        }
        return fields;
    }

    std::uint8_t NumberOrFail(std::string_view field) const {
        const std::optional<std::uint8_t> number = Number(field);
        if (!number) {
            Fail(texts::kNumberRange);
        }
        return *number;
    }

    void CheckCharacters(std::string_view line) const {
        if (!IsUtf8(line)) {
            Fail(texts::kNotUtf8);
        }
        if (HasControlCharacter(line)) {
            Fail(texts::kControlCharacter);
        }
    }

    void CountFamily(std::string_view family) {
        if (voices_.empty() || voices_.back().family != family) {
            // Families that keep alternating would make the list of them slow to build.
            if (++familyChanges_ > kMostFamilies) {
                Fail(texts::kTooManyFamilies);
            }
        }
    }

    void AddVoice(std::string_view line) {
        if (voices_.size() == kMostTableRows) {
            Fail(texts::kTooManyRows);
        }
        CheckCharacters(line);
        const auto& [family, category, msb, lsb, program, name] = Split(line);
        if (family.empty() || category.empty() || name.empty()) {
            Fail(texts::kEmptyField);
        }
        CountFamily(family);
        Voice voice;
        voice.row = static_cast<std::uint32_t>(voices_.size());
        voice.msb = NumberOrFail(msb);
        voice.lsb = NumberOrFail(lsb);
        voice.program = NumberOrFail(program);
        voice.name = name;
        voice.family = family;
        voice.category = category;
        voices_.push_back(voice);
    }

    std::unique_ptr<const std::string> text_;
    std::vector<Voice> voices_;
    std::size_t line_ = 0;
    std::size_t familyChanges_ = 0;
};

} // namespace

VoiceTable ReadVoiceTable(std::string bytes) {
    return Reader(std::move(bytes)).Read();
}

VoiceTable ReadVoiceTableFile(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!error && size > kMostTableBytes) {
        throw VoiceFileError(texts::kTableTooLarge);
    }
    const auto bytes = system::ReadRegularFile(path);
    if (!bytes) {
        throw VoiceFileError(texts::kTableUnreadable);
    }
    return ReadVoiceTable(std::string(bytes->begin(), bytes->end()));
}

} // namespace tracksmith::instruments
