#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <string_view>

#include "instruments/voices/voice.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_tables.h"

namespace tracksmith::instruments {

inline std::ostream& operator<<(std::ostream& out, const VoiceNumbers& numbers) {
    return out << int{numbers.msb} << '/' << int{numbers.lsb} << '/' << int{numbers.program};
}

namespace test {

inline std::filesystem::path ShippedVoices() {
    return std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "data" / "voices";
}

/// The shipped tables, once for all tests.
inline const VoiceTables& Shipped() {
    static const VoiceTables tables({ShippedVoices()});
    return tables;
}

/// A table file with the header and these lines.
inline std::string TableOf(std::string_view lines) {
    std::string table(kTableHeaderLine);
    return table.append(1, '\n').append(lines);
}

inline void PutText(const std::filesystem::path& file, std::string_view text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

} // namespace test
} // namespace tracksmith::instruments
