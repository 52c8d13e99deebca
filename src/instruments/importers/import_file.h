#pragma once

#include <filesystem>
#include <vector>

#include "instruments/importers/imported_table.h"

namespace tracksmith::instruments {

/// Reads a file of voices, whose name says what it is: `.midnam`, `.ins`, or one of the program's
/// own tables for any other name. One table for each model of the file. Throws VoiceFileError.
std::vector<ImportedTable> ImportVoiceFile(const std::filesystem::path& file);

} // namespace tracksmith::instruments
