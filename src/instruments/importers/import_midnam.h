#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "instruments/importers/imported_table.h"

namespace tracksmith::instruments {

/// Reads a MIDNAM file (XML of the "MIDI Names, Device Types, and Information" DTD of the MIDI
/// Manufacturers Association): one table for each model that has voices. Bank numbers are the
/// control changes 0 and 32 of a bank or, before those, of the patch itself; programs are
/// `ProgramChange`, never the label in `Number`. A name set for channel 10 alone, and a patch
/// that names its keys, are drum kits, as is what stands in the kit banks of GM2 and XG. Nothing
/// outside the file is ever fetched. Throws VoiceFileError. Any thread.
std::vector<ImportedTable> ImportMidnam(std::span<const std::uint8_t> bytes);

} // namespace tracksmith::instruments
