#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "base/message_host.h"

#include "app/session/session.h"

namespace tracksmith::app {

using session::SaveFormat;

/// Writes the song to `file`, whole or not at all. A fault is shown through `host` and raised as
/// EMidiError; the file keeps its old bytes then. Asks nothing: see ConfirmOverwrite. On success
/// the song counts as unmodified, `file` becomes its file name and `format` the file's format; the
/// practice tempo has been written and is that of the file from then on. Another song that is heard
/// in place of it is heard no more.
void SaveMidiFile(session::Session& session, const std::filesystem::path& file, SaveFormat format,
                  MessageHost& host);

/// The song as the bytes of a file, coded with the session's options; they stay until the next
/// call. Raises EMidiError.
std::span<const std::uint8_t> EncodeSong(session::Session& session, SaveFormat format,
                                         MessageHost& host);

/// Writes `bytes` to `file` with the program's messages for what can go wrong: shown through
/// `host` and raised as EMidiError.
void WriteMidiFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                   MessageHost& host);

/// True when `file` does not exist yet or the user agrees to overwrite it.
bool ConfirmOverwrite(const std::filesystem::path& file, MessageHost& host);

} // namespace tracksmith::app
