#pragma once

#include <filesystem>

#include "base/message_host.h"

#include "app/session/workspace.h"

namespace tracksmith::app {

/// Name of the note-pairing report about the song of `file` in `folder`: "Waltz_NoteOnOff.txt".
std::filesystem::path NoteReportFile(const std::filesystem::path& folder,
                                     const std::filesystem::path& file);

/// Checks the balance of note-ons and note-offs and writes the report to `file`, whose folder is
/// made where it is missing. Returns false, and writes nothing, where there is no fault. A file
/// that cannot be written is shown through `host` and raised as EMidiError.
bool WriteNoteReport(const session::Workspace& workspace, const std::filesystem::path& file,
                     MessageHost& host);

} // namespace tracksmith::app
