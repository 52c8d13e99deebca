#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/settings/settings_store.h"
#include "instruments/revoicer/revoice_entry.h"

namespace tracksmith::instruments {

/// The auto revoicer's table of an instrument: which voices become which. Of several entries for a
/// voice the first holds. Kept in the settings of the instrument; lines there that are no entries
/// are kept as they are but change nothing. One thread.
class RevoicerTable {
public:
    static constexpr std::size_t kMostRows = 16'384;

    /// A line of the table.
    struct Row {
        std::string line;
        /// Empty where the line is none.
        std::optional<RevoiceEntry> entry;
        /// The entry is applied.
        bool ticked = true;
    };

    /// Reads the stored table of the instrument of this name; rows beyond kMostRows are left out.
    static RevoicerTable Load(settings::SettingsStore& store, std::string_view instrumentName);
    /// The table in a text of lines as RevoiceLine makes them; blank lines and such as begin with
    /// '#' are passed over. `badLine` gets the number (from 1) of the first line that is no entry,
    /// or the first beyond kMostRows, and nothing is returned then.
    static std::optional<RevoicerTable> FromText(std::string_view text, std::size_t& badLine);

    /// Stores the table in place of the former one. Returns false when that failed at any value.
    bool Save(settings::SettingsStore& store, std::string_view instrumentName) const;
    /// The entries as FromText reads them, with a head line.
    std::string Text() const;

    const std::vector<Row>& Rows() const { return rows_; }
    /// The ticked entries in their order.
    std::vector<RevoiceEntry> Applied() const;

    /// Puts the entry in the place of the first for the same source voice, else behind the last.
    /// False, and no change, when the table is full.
    bool Put(const RevoiceEntry& entry);
    void Tick(std::size_t row, bool on) { rows_.at(row).ticked = on; }
    void Delete(std::size_t row) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row)); }

private:
    bool Append(std::string line);

    std::vector<Row> rows_;
};

} // namespace tracksmith::instruments
