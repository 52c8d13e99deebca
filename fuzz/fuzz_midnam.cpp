#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "instruments/importers/import_midnam.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_reader.h"
#include "instruments/voices/voice_table_writer.h"

// Any bytes: they give tables that can be saved and read again as they are, or are refused with a
// message.

using namespace tracksmith::instruments;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        for (const ImportedTable& imported : ImportMidnam({data, size})) {
            const std::string text = VoiceTableText(imported.table.Voices());
            const VoiceTable again = ReadVoiceTable(text);
            if (again.Voices().empty() || VoiceTableText(again.Voices()) != text) {
                std::abort();
            }
        }
    } catch (const VoiceFileError&) {
        return 0; // refused
    }
    return 0;
}
