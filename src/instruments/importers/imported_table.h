#pragma once

#include <cstddef>
#include <string>

#include "instruments/voices/voice_table.h"

namespace tracksmith::instruments {

/// Largest file that is imported, in bytes.
inline constexpr std::size_t kMostImportBytes = 8U << 20U;
/// Most voices that one file gives, over all its instruments.
inline constexpr std::size_t kMostImportedRows = 131'072;

/// The voices of one instrument from a foreign file, in the order of MakeVoiceTable.
struct ImportedTable {
    /// Maker and model as the file names them.
    std::string modelName;
    VoiceTable table;
    /// Entries without a name, a program or the list that they refer to, which the table lacks.
    std::size_t leftOut = 0;
};

} // namespace tracksmith::instruments
