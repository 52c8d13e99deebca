#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "instruments/importers/imported_table.h"

namespace tracksmith::instruments {

/// Reads a text file of instrument definitions (".ins", UTF-8 or Latin-1): one table for each
/// instrument that has voices. `Patch[bank]` is read by the instrument's `BankSelMethod`; a list
/// given for all banks (`*`) is listed at bank 0 unless that has one of its own. Voices that
/// `Drum[bank,program]=1` names, and those in the kit banks of GM2 and XG, are drum kits; `BasedOn`
/// in lists is followed. Throws VoiceFileError. Any thread.
std::vector<ImportedTable> ImportIns(std::span<const std::uint8_t> bytes);

} // namespace tracksmith::instruments
