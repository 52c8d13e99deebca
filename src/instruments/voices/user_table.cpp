#include "instruments/voices/user_table.h"

#include <string>

#include "instruments/voices/texts.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::instruments {

std::optional<std::filesystem::path> StoreUserTable(VoiceTables& tables, InstrumentId instrument,
                                                    const VoiceTable& table, MessageHost& host) {
    const Instrument* entry = FindInstrument(instrument);
    if (entry == nullptr) {
        throw VoiceFileError(texts::kUnknownInstrument);
    }
    if (tables.UserFolder().empty()) {
        throw VoiceFileError(texts::kTableNotWritten);
    }
    tables.Reload(instrument); // the folder as it is now
    if (tables.HasUserTable(instrument) &&
        !host.AskYesNo(texts::ReplaceQuestion(entry->name, host.CurrentLanguage()))) {
        return std::nullopt;
    }
    const std::filesystem::path path = SaveUserTable(tables.UserFolder(), instrument, table);
    tables.Reload(instrument);
    return path;
}

} // namespace tracksmith::instruments
