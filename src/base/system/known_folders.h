#pragma once

#include <filesystem>

namespace tracksmith::system {

/// Folder of the running program; empty when the system does not tell.
std::filesystem::path ProgramFolder();

/// Folder for what the user brings to the program, for example voice lists: `tracksmith` in
/// `XDG_DATA_HOME`, else in `~/.local/share`; on Windows `Tracksmith` in the roaming application
/// data. It need not exist yet. Empty when the user has none.
std::filesystem::path UserDataFolder();

} // namespace tracksmith::system
