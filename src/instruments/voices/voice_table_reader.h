#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "instruments/voices/voice_table.h"

namespace tracksmith::instruments {

/// Limits of a voice table, also of an imported one.
inline constexpr std::size_t kMostTableBytes = 8U << 20U;
inline constexpr std::size_t kMostTableRows = 65'536;
inline constexpr std::size_t kMostLineBytes = 4'096;
/// Most changes from one family to another between neighbouring rows.
inline constexpr std::size_t kMostFamilies = 1'000;

/// First line of every voice table.
inline constexpr std::string_view kTableHeaderLine = "family\tcategory\tmsb\tlsb\tprogram\tname";

/// Reads the bytes of a voice table: UTF-8, with or without a byte order mark; lines that end with
/// a line feed, with or without a carriage return before it; six columns separated by tabs, no
/// quoting, the header first. Strict: what else differs throws VoiceFileError with its line.
VoiceTable ReadVoiceTable(std::string bytes);

/// Reads the table in a file; throws VoiceFileError, also for a file that is missing, cannot be
/// read or is larger than kMostTableBytes.
VoiceTable ReadVoiceTableFile(const std::filesystem::path& path);

} // namespace tracksmith::instruments
