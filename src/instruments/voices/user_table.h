#pragma once

#include <filesystem>
#include <optional>

#include "base/message_host.h"

#include "instruments/voices/voice_tables.h"

namespace tracksmith::instruments {

/// Takes `table` as the user's own table of `instrument`: asks before another one of the user's is
/// replaced, saves it in the user's folder and has `tables` read it. Returns its path, nothing when
/// the user does not want to replace the former one. Throws VoiceFileError where it cannot be
/// saved; the former table is kept then.
std::optional<std::filesystem::path> StoreUserTable(VoiceTables& tables, InstrumentId instrument,
                                                    const VoiceTable& table, MessageHost& host);

} // namespace tracksmith::instruments
