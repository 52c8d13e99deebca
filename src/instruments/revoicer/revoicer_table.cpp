#include "instruments/revoicer/revoicer_table.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/tab_lines.h"

namespace tracksmith::instruments {
namespace {

constexpr std::string_view kCount = "AutoRevoicerElm";
constexpr std::string_view kUnticked = "AutoRevoicerUnticked";
constexpr std::string_view kHead =
    "# target MSB\tLSB\tprogram\tname\tsource MSB\tLSB\tprogram\tname\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// "AutoRev0001"
std::string ValueName(std::size_t number) {
    const std::string digits = std::to_string(number);
    return "AutoRev" + std::string(4 - std::min<std::size_t>(digits.size(), 4), '0') + digits;
}

std::vector<std::string> ValueNames(std::size_t first, std::size_t last) {
    std::vector<std::string> names;
    for (std::size_t number = first; number <= last; ++number) {
        names.push_back(ValueName(number));
    }
    return names;
}

std::size_t StoredRows(settings::SettingsStore& store, std::string_view instrumentName) {
    const std::int32_t count = store.ReadIntFromUserRegistrySubdir(instrumentName, kCount, 0);
    return std::min(static_cast<std::size_t>(std::max(count, 0)), RevoicerTable::kMostRows);
}

// Numbers of rows from 1, separated by blanks.
std::set<std::string> Words(std::string_view text) {
    std::set<std::string> words;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        words.emplace(word);
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
    return words;
}

} // namespace

bool RevoicerTable::Append(std::string line) {
    auto entry = ReadRevoiceEntry(line);
    const bool isEntry = entry.has_value();
    rows_.push_back({std::move(line), std::move(entry)});
    return isEntry;
}

RevoicerTable RevoicerTable::Load(settings::SettingsStore& store, std::string_view instrumentName) {
    RevoicerTable table;
    const auto unticked = Words(store.ReadStrFromUserRegistrySubdir(instrumentName, kUnticked, ""));
    const std::vector<std::string> names = ValueNames(1, StoredRows(store, instrumentName));
    for (std::string& line : store.ReadTextsFromUserRegistrySubdir(instrumentName, names)) {
        table.Append(std::move(line));
        table.rows_.back().ticked = !unticked.contains(std::to_string(table.rows_.size()));
    }
    return table;
}

std::optional<RevoicerTable> RevoicerTable::FromText(std::string_view text, std::size_t& badLine) {
    RevoicerTable table;
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    for (badLine = 1; !text.empty(); ++badLine) {
        const std::string_view line = TakeLine(text);
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        if (table.rows_.size() == kMostRows || !table.Append(std::string(line))) {
            return std::nullopt;
        }
    }
    return table;
}

bool RevoicerTable::Save(settings::SettingsStore& store, std::string_view instrumentName) const {
    std::vector<settings::TextChange> changes;
    std::string unticked;
    for (const Row& row : rows_) {
        const std::size_t number = changes.size() + 1;
        changes.push_back({ValueName(number), row.line});
        if (!row.ticked) {
            unticked += (unticked.empty() ? "" : " ") + std::to_string(number);
        }
    }
    for (std::string& name : ValueNames(rows_.size() + 1, StoredRows(store, instrumentName))) {
        changes.push_back({std::move(name), std::nullopt});
    }
    changes.push_back({std::string(kUnticked), std::move(unticked)});
    return store.WriteTextsToUserRegistrySubdir(instrumentName, changes) &&
           store.WriteIntToUserRegistrySubdir(instrumentName, kCount,
                                              static_cast<std::int32_t>(rows_.size()));
}

std::string RevoicerTable::Text() const {
    std::string text(kHead);
    for (const Row& row : rows_) {
        if (row.entry) {
            text += RevoiceLine(*row.entry) + '\n';
        }
    }
    return text;
}

std::vector<RevoiceEntry> RevoicerTable::Applied() const {
    std::vector<RevoiceEntry> entries;
    for (const Row& row : rows_) {
        if (row.entry && row.ticked) {
            entries.push_back(*row.entry);
        }
    }
    return entries;
}

bool RevoicerTable::Put(const RevoiceEntry& entry) {
    const auto same = std::ranges::find_if(
        rows_, [&](const Row& row) { return row.entry && row.entry->source == entry.source; });
    if (same == rows_.end() && rows_.size() == kMostRows) {
        return false;
    }
    Row& row = same == rows_.end() ? rows_.emplace_back() : *same;
    row = {RevoiceLine(entry), entry};
    return true;
}

} // namespace tracksmith::instruments
