#include "instruments/importers/row_collector.h"

#include <string_view>
#include <utility>

#include "instruments/importers/texts.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments {
namespace {

// Banks that hold kits by convention, so that files need not say so: GM2 (RP-024), and XG on the
// instruments of its maker.
bool IsKitBank(std::string_view model, VoiceNumbers numbers) {
    const bool isXg = model.starts_with("Yamaha") && (numbers.msb == 126 || numbers.msb == 127);
    return isXg || numbers.msb == 120;
}

// The lines that a fault of the finished table names are not those of the foreign file.
VoiceTable TableOf(std::vector<VoiceRow> rows) {
    try {
        return MakeVoiceTable(std::move(rows));
    } catch (const VoiceFileError& error) {
        throw VoiceFileError(error.Reason());
    }
}

} // namespace

bool RowCollector::Add(VoiceRow row) {
    if (row.name.empty()) {
        LeaveOut();
        return true;
    }
    if (rows_.size() == kMostTableRows || ++rowsInAll_ > kMostImportedRows) {
        return false;
    }
    rows_.push_back(std::move(row));
    return true;
}

void RowCollector::Finish(const std::vector<std::string>& models) {
    std::vector<VoiceRow> rows = std::exchange(rows_, {});
    const std::size_t leftOut = std::exchange(leftOut_, 0);
    if (rows.empty() || models.empty()) {
        return;
    }
    rowsInAll_ += rows.size() * (models.size() - 1);
    if (rowsInAll_ > kMostImportedRows) {
        throw VoiceFileError(texts::kImportTooMany);
    }
    for (VoiceRow& row : rows) {
        if (IsKitBank(models.front(), row.numbers)) {
            row.family = kDrumsFamily;
        }
    }
    for (const std::string& model : models) {
        tables_.push_back({model, TableOf(rows), leftOut});
    }
}

std::vector<ImportedTable> RowCollector::Take() {
    if (tables_.empty()) {
        throw VoiceFileError(texts::kImportNoVoices);
    }
    return std::move(tables_);
}

} // namespace tracksmith::instruments
