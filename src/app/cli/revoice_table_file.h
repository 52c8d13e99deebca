#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/cli/cli_context.h"
#include "instruments/revoicer/revoice_entry.h"

namespace tracksmith::cli {

/// The entries of a file of the auto revoicer (see RevoicerTable::FromText). Nothing, with the
/// reason logged, when it cannot be read or a line is no entry.
std::optional<std::vector<instruments::RevoiceEntry>> ReadRevoiceTable(const CliContext& context,
                                                                       const std::string& file);

} // namespace tracksmith::cli
