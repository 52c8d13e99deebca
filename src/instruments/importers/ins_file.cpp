#include "instruments/importers/ins_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/text.h"

#include "instruments/importers/import_text.h"
#include "instruments/importers/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kMostInsLineBytes = 4'096;
constexpr unsigned kLargestProgram = 127;
constexpr unsigned kLargestBank = 16'383;

enum class Section : std::uint8_t { None, PatchNames, Definitions, Other };

char Small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSameWord(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, Small, Small);
}

// A comment begins at a semicolon that begins the line or follows a blank.
std::string_view WithoutComment(std::string_view line) {
    for (std::size_t at = line.find(';'); at != std::string_view::npos;
         at = line.find(';', at + 1)) {
        if (at == 0 || line[at - 1] == ' ' || line[at - 1] == '\t') {
            return Trimmed(line.substr(0, at));
        }
    }
    return Trimmed(line);
}

Section SectionOf(std::string_view line) {
    if (IsSameWord(line, ".Patch Names")) {
        return Section::PatchNames;
    }
    return IsSameWord(line, ".Instrument Definitions") ? Section::Definitions : Section::Other;
}

/// "Patch[128]" or "Drum[128,*]": a word and the numbers in brackets behind it.
struct Key {
    std::string_view word;
    std::vector<std::string_view> numbers;
};

Key KeyOf(std::string_view text) {
    const std::size_t open = text.find('[');
    Key key{.word = Trimmed(text.substr(0, open)), .numbers = {}};
    if (open == std::string_view::npos || !text.ends_with(']')) {
        return key;
    }
    std::string_view inside = text.substr(open + 1, text.size() - open - 2);
    while (key.numbers.size() < 2) {
        const std::size_t comma = inside.find(',');
        key.numbers.push_back(Trimmed(inside.substr(0, comma)));
        if (comma == std::string_view::npos) {
            break;
        }
        inside.remove_prefix(comma + 1);
    }
    return key;
}

/// Takes a file apart line by line; remembers the line for the errors.
class Parser {
public:
    explicit Parser(std::string_view text) : rest_(text) {}

    InsFile Parse() {
        while (!rest_.empty()) {
            ReadLine(TakeLine());
        }
        if (!knowsSection_) {
            throw VoiceFileError(texts::kInsNoSection, std::max(firstHead_, std::size_t{1}));
        }
        return std::move(file_);
    }

private:
    [[noreturn]] void Fail(const Text& reason) const { throw VoiceFileError(reason, line_); }

    std::string_view TakeLine() {
        ++line_;
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        if (end > kMostInsLineBytes) {
            Fail(texts::kInsLineTooLong);
        }
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        return WithoutComment(line);
    }

    void ReadLine(std::string_view line) {
        if (line.empty()) {
            return;
        }
        if (line.starts_with('.')) {
            BeginSection(line);
        } else if (section_ == Section::None) {
            Fail(texts::kInsLine);
        } else if (section_ == Section::Other) {
            return;
        } else if (line.starts_with('[')) {
            BeginPart(line);
        } else {
            ReadSetting(line);
        }
    }

    void BeginSection(std::string_view line) {
        section_ = SectionOf(line);
        knowsSection_ = knowsSection_ || section_ != Section::Other;
        firstHead_ = firstHead_ == 0 ? line_ : firstHead_;
        list_ = nullptr;
        inDefinition_ = false;
    }

    void BeginPart(std::string_view line) {
        const std::string_view name = Trimmed(line.substr(1, line.rfind(']') - 1));
        if (!line.ends_with(']') || name.empty()) {
            Fail(texts::kInsLine);
        }
        if (section_ == Section::PatchNames) {
            list_ = &file_.lists[name];
            list_->line = line_;
        } else {
            file_.definitions.emplace_back().name = name;
            inDefinition_ = true;
        }
    }

    void ReadSetting(std::string_view line) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || (list_ == nullptr && !inDefinition_)) {
            Fail(texts::kInsLine);
        }
        const std::string_view key = Trimmed(line.substr(0, equals));
        const std::string_view value = Trimmed(line.substr(equals + 1));
        if (list_ != nullptr) {
            ReadName(key, value);
        } else {
            ReadDefinition(KeyOf(key), value);
        }
    }

    void ReadName(std::string_view key, std::string_view value) {
        if (IsSameWord(key, "BasedOn")) {
            list_->basedOn = value;
            list_->line = line_;
            return;
        }
        const auto program = ImportedNumber(key, kLargestProgram);
        if (!program) {
            Fail(texts::kInsProgram);
        }
        list_->names.try_emplace(static_cast<std::uint8_t>(*program), value);
    }

    std::int32_t NumberOrAny(std::string_view text, unsigned most, const Text& fault) const {
        if (text == "*") {
            return kInsAny;
        }
        const auto number = ImportedNumber(text, most);
        if (!number) {
            Fail(fault);
        }
        return static_cast<std::int32_t>(*number);
    }

    void ReadDefinition(const Key& key, std::string_view value) {
        InsDefinition& definition = file_.definitions.back();
        if (IsSameWord(key.word, "BankSelMethod")) {
            const auto method = ImportedNumber(value, 3);
            if (!method) {
                Fail(texts::kInsMethod);
            }
            definition.method = static_cast<BankSelMethod>(*method);
        } else if (IsSameWord(key.word, "Patch")) {
            if (key.numbers.size() != 1) {
                Fail(texts::kInsLine);
            }
            const auto bank = NumberOrAny(key.numbers[0], kLargestBank, texts::kInsBank);
            definition.banks.push_back({bank, value, line_});
        } else if (IsSameWord(key.word, "Drum")) {
            if (key.numbers.size() != 2) {
                Fail(texts::kInsLine);
            }
            const auto bank = NumberOrAny(key.numbers[0], kLargestBank, texts::kInsBank);
            const auto program = NumberOrAny(key.numbers[1], kLargestProgram, texts::kInsProgram);
            definition.drums[{bank, program}] = value == "1";
        }
    }

    std::string_view rest_;
    std::size_t line_ = 0;
    Section section_ = Section::None;
    InsPatchList* list_ = nullptr;
    bool inDefinition_ = false;
    bool knowsSection_ = false;
    std::size_t firstHead_ = 0;
    InsFile file_;
};

} // namespace

bool InsNameLess::operator()(std::string_view a, std::string_view b) const {
    return std::ranges::lexicographical_compare(a, b, {}, Small, Small);
}

InsFile ParseInsFile(std::string_view text) {
    return Parser(text).Parse();
}

} // namespace tracksmith::instruments
