#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "base/message_host.h"

#include "app/workspace.h"

namespace tracksmith::app {

/// Empties the song in memory: no tracks, no file name, not modified. Keeps options and memory.
void ClearMidiMemory(Workspace& workspace);

/// The whole load sequence: reads `file` into memory, clears the song, decodes, builds the time map
/// and runs the later steps. Faults are shown through `host` and raised as EMidiError; when the
/// file cannot be read or is too short the song in memory stays, after any other fault it is empty
/// and without a file name, so that saving cannot overwrite the file.
void OpenMidiFile(Workspace& workspace, const std::filesystem::path& file, MessageHost& host);

/// OpenMidiFile for bytes that are already in memory; `name` becomes the file name
/// (taken by value, since it may be the workspace's own, which is cleared on the way).
void OpenMidiData(Workspace& workspace, std::span<const std::uint8_t> bytes,
                  std::filesystem::path name, MessageHost& host);

/// Makes a new song without a file: a conductor track and a track for each channel with the usual
/// start values, prepared like a loaded one. Raises EMidiError.
void NewSong(Workspace& workspace, MessageHost& host);

} // namespace tracksmith::app
