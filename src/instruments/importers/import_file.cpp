#include "instruments/importers/import_file.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <optional>
#include <string>

#include "base/system/file_io.h"

#include "instruments/importers/import_ins.h"
#include "instruments/importers/import_midnam.h"
#include "instruments/voices/texts.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_reader.h"

namespace tracksmith::instruments {
namespace {

std::string LowerExtension(const std::filesystem::path& file) {
    std::string extension = system::PathText(file.extension());
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

std::vector<std::uint8_t> BytesOf(const std::filesystem::path& file) {
    std::optional<std::vector<std::uint8_t>> bytes = system::ReadRegularFile(file);
    if (!bytes) {
        throw VoiceFileError(texts::kTableUnreadable);
    }
    return std::move(*bytes);
}

std::vector<ImportedTable> OwnTable(const std::filesystem::path& file) {
    std::vector<ImportedTable> tables;
    tables.push_back({system::PathText(file.stem()), ReadVoiceTableFile(file)});
    return tables;
}

} // namespace

std::vector<ImportedTable> ImportVoiceFile(const std::filesystem::path& file) {
    const std::string extension = LowerExtension(file);
    if (extension == ".midnam") {
        return ImportMidnam(BytesOf(file));
    }
    return extension == ".ins" ? ImportIns(BytesOf(file)) : OwnTable(file);
}

} // namespace tracksmith::instruments
