#include "instruments/voices/voice_table_writer.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <system_error>
#include <tuple>
#include <utility>

#include "base/system/file_io.h"

#include "instruments/voices/texts.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_reader.h"

namespace tracksmith::instruments {
namespace {

void AppendLine(std::string& out, std::string_view family, std::string_view category,
                VoiceNumbers numbers, std::string_view name) {
    out.append(family).append(1, '\t').append(category).append(1, '\t');
    for (const std::uint8_t number : {numbers.msb, numbers.lsb, numbers.program}) {
        out.append(std::to_string(number)).append(1, '\t');
    }
    out.append(name).append(1, '\n');
}

std::string HeaderLine() {
    std::string line(kTableHeaderLine);
    return line.append(1, '\n');
}

/// A row with its place: family and category by where they first occur, then the numbers.
struct PlacedRow {
    std::tuple<std::size_t, std::size_t, VoiceNumbers> place;
    VoiceRow row;
};

std::vector<PlacedRow> Placed(std::vector<VoiceRow> rows) {
    std::map<std::string, std::size_t> families;
    std::map<std::pair<std::string, std::string>, std::size_t> categories;
    std::vector<PlacedRow> placed;
    placed.reserve(rows.size());
    for (VoiceRow& row : rows) {
        const auto family = families.try_emplace(row.family, families.size()).first;
        const auto category =
            categories.try_emplace({row.family, row.category}, categories.size()).first;
        placed.push_back({{family->second, category->second, row.numbers}, std::move(row)});
    }
    return placed;
}

bool IsSame(const VoiceRow& a, const VoiceRow& b) {
    return a.numbers == b.numbers && a.family == b.family && a.category == b.category &&
           a.name == b.name;
}

} // namespace

std::string VoiceTableText(std::span<const Voice> voices) {
    std::string out = HeaderLine();
    for (const Voice& voice : voices) {
        AppendLine(out, voice.family, voice.category, voice.Numbers(), voice.name);
    }
    return out;
}

VoiceTable MakeVoiceTable(std::vector<VoiceRow> rows) {
    std::vector<PlacedRow> placed = Placed(std::move(rows));
    std::ranges::stable_sort(placed, {}, &PlacedRow::place);
    const auto same = [](const PlacedRow& left, const PlacedRow& right) {
        return IsSame(left.row, right.row);
    };
    placed.erase(std::unique(placed.begin(), placed.end(), same), placed.end());
    std::string text = HeaderLine();
    for (const auto& [place, row] : placed) {
        AppendLine(text, row.family, row.category, row.numbers, row.name);
    }
    // The strict reader vouches for every table that is made to be written.
    return ReadVoiceTable(std::move(text));
}

std::string TableFileName(const Instrument& instrument) {
    const std::string code = std::to_string(instrument.id);
    std::string name(3 - code.size(), '0');
    name += code;
    bool gap = true;
    for (const char c : instrument.name) {
        const bool capital = c >= 'A' && c <= 'Z';
        if (!capital && !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9')) {
            gap = true;
            continue;
        }
        if (std::exchange(gap, false)) {
            name += '-';
        }
        name += capital ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return name + ".tsv";
}

std::filesystem::path SaveUserTable(const std::filesystem::path& folder, InstrumentId instrument,
                                    const VoiceTable& table) {
    const Instrument* entry = FindInstrument(instrument);
    if (entry == nullptr) {
        throw VoiceFileError(texts::kUnknownInstrument);
    }
    std::error_code error;
    std::filesystem::create_directories(folder, error); // a failure shows when the file is written
    std::filesystem::path path = folder / TableFileName(*entry);
    const std::string text = VoiceTableText(table.Voices());
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    if (system::WriteFileAtomically(path, bytes).outcome != system::WriteOutcome::Written) {
        throw VoiceFileError(texts::kTableNotWritten);
    }
    return path;
}

} // namespace tracksmith::instruments
