#include "app/cli/revoice_table_file.h"

#include <ostream>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/input_files.h"
#include "app/cli/texts.h"
#include "instruments/revoicer/revoicer_table.h"

namespace tracksmith::cli {

std::optional<std::vector<instruments::RevoiceEntry>> ReadRevoiceTable(const CliContext& context,
                                                                       const std::string& file) {
    const auto bytes = system::ReadRegularFile(PathOf(file));
    if (!bytes) {
        context.log << DisplayPath(file) << ": " << context.Say(texts::kTableUnreadable) << "\n";
        return std::nullopt;
    }
    std::size_t badLine = 0;
    const auto table =
        instruments::RevoicerTable::FromText(std::string(bytes->begin(), bytes->end()), badLine);
    if (!table) {
        context.log << DisplayPath(file) << ":" << badLine << ": "
                    << context.Say(texts::kNoRevoiceEntry) << "\n";
        return std::nullopt;
    }
    return table->Applied();
}

} // namespace tracksmith::cli
