#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "base/message_host.h"

#include "app/session/session.h"

namespace tracksmith::app {

/// Empties the song in memory: no tracks, no file name, not modified. Keeps options and memory.
/// Raises EMidiError when the song is in use by a driver that hangs.
void ClearMidiMemory(session::Session& session, MessageHost& host);

/// The whole load sequence: reads `file` into memory, clears the song, decodes, builds the time map
/// and runs the later steps. Faults are shown through `host` and raised as EMidiError; when the
/// file cannot be read, is too short, or the song cannot be left now, the song in memory stays;
/// after any other fault it is empty and without a file name, so that saving cannot overwrite the
/// file. What preparing changed can be taken back, else the lengthening of notes. The demo song
/// gets no name to save to.
void OpenMidiFile(session::Session& session, const std::filesystem::path& file, MessageHost& host,
                  bool isDemo = false);

/// The bytes of a file; a session keeps those of its song.
using SharedBytes = std::shared_ptr<const std::vector<std::uint8_t>>;

/// OpenMidiFile for bytes that are already in memory; `name` becomes the file name.
void OpenMidiData(session::Session& session, SharedBytes bytes, const std::filesystem::path& name,
                  MessageHost& host, bool isDemo = false);
void OpenMidiData(session::Session& session, std::vector<std::uint8_t> bytes,
                  const std::filesystem::path& name, MessageHost& host);

/// Makes a new song without a file: a conductor track and a track for each channel with the usual
/// start values, prepared like a loaded one. Raises EMidiError.
void NewSong(session::Session& session, MessageHost& host);

} // namespace tracksmith::app
