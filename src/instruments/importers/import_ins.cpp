#include "instruments/importers/import_ins.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "instruments/importers/import_text.h"
#include "instruments/importers/ins_file.h"
#include "instruments/importers/row_collector.h"
#include "instruments/importers/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

constexpr int kMostBases = 32;
constexpr std::int32_t kLargestByte = 127;

// Lists that every reader of such files knows: the numbers themselves, which are no names.
constexpr std::array<std::string_view, 3> kNumberLists{"0..127", "1..128", "0..16383"};

// The bank select numbers that a bank number stands for; the program is left 0.
VoiceNumbers BankNumbers(const InsBank& bank, BankSelMethod method) {
    std::int32_t msb = 0;
    std::int32_t lsb = 0;
    const std::int32_t number = std::max(bank.bank, 0);
    switch (method) {
        case BankSelMethod::Both:
            msb = number / 128;
            lsb = number % 128;
            break;
        case BankSelMethod::Msb:
            // Many files keep the number for both controllers here and only mean not to send the
            // LSB.
            msb = number > kLargestByte && number % 128 == 0 ? number / 128 : number;
            break;
        case BankSelMethod::Lsb:
            lsb = number;
            break;
        case BankSelMethod::None:
            break;
    }
    if (msb > kLargestByte || lsb > kLargestByte) {
        throw VoiceFileError(texts::kInsBank, bank.line);
    }
    return {static_cast<std::uint8_t>(msb), static_cast<std::uint8_t>(lsb), 0};
}

// The most particular statement decides.
bool IsKit(const InsDefinition& definition, std::int32_t bank, std::int32_t program) {
    using Place = std::pair<std::int32_t, std::int32_t>;
    for (const Place& place : {Place{bank, program}, Place{bank, kInsAny}, Place{kInsAny, program},
                               Place{kInsAny, kInsAny}}) {
        if (const auto drum = definition.drums.find(place); drum != definition.drums.end()) {
            return drum->second;
        }
    }
    return false;
}

/// Makes rows of one file's definitions.
class InsReader {
public:
    InsReader(const InsFile& file, TextEncoding encoding) : file_(file), encoding_(encoding) {}

    std::vector<ImportedTable> Read() {
        for (const InsDefinition& definition : file_.definitions) {
            const bool hasBank0 = std::ranges::any_of(
                definition.banks, [](const InsBank& bank) { return bank.bank == 0; });
            for (const InsBank& bank : definition.banks) {
                if (bank.bank != kInsAny || !hasBank0) {
                    AddBank(definition, bank);
                }
            }
            rows_.Finish({ImportedName(definition.name, encoding_)});
        }
        return rows_.Take();
    }

private:
    void CountVisit(std::size_t line) {
        if (!rows_.CountVisit()) {
            throw VoiceFileError(texts::kImportTooManyReferences, line);
        }
    }

    // The names of a list and those of its bases that it lacks.
    std::map<std::uint8_t, std::string_view> NamesOf(const InsBank& bank) {
        std::map<std::uint8_t, std::string_view> names;
        std::string_view next = bank.list;
        std::size_t line = bank.line;
        for (int depth = 0; !next.empty() && std::ranges::count(kNumberLists, next) == 0; ++depth) {
            const auto list = file_.lists.find(next);
            if (list == file_.lists.end()) {
                rows_.LeaveOut();
                break;
            }
            if (depth == kMostBases) {
                throw VoiceFileError(texts::kReferenceDepth, line);
            }
            line = list->second.line;
            for (const auto& [program, name] : list->second.names) {
                CountVisit(line);
                names.try_emplace(program, name);
            }
            next = list->second.basedOn;
        }
        return names;
    }

    void AddBank(const InsDefinition& definition, const InsBank& bank) {
        CountVisit(bank.line);
        const VoiceNumbers numbers = BankNumbers(bank, definition.method);
        const std::string category = ImportedName(bank.list, encoding_);
        for (const auto& [program, name] : NamesOf(bank)) {
            VoiceRow row;
            const bool isKit = IsKit(definition, std::max(bank.bank, 0), program);
            row.family = isKit ? kDrumsFamily : texts::kImportedFamily;
            row.category = category;
            row.numbers = numbers;
            row.numbers.program = program;
            row.name = ImportedName(name, encoding_);
            if (!rows_.Add(std::move(row))) {
                throw VoiceFileError(texts::kImportTooMany, bank.line);
            }
        }
    }

    const InsFile& file_;
    TextEncoding encoding_;
    RowCollector rows_;
};

} // namespace

std::vector<ImportedTable> ImportIns(std::span<const std::uint8_t> bytes) {
    const ImportText text = ReadImportText(bytes);
    const InsFile file = ParseInsFile(text.bytes);
    return InsReader(file, text.encoding).Read();
}

} // namespace tracksmith::instruments
