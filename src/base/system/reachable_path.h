#pragma once

#include <filesystem>

namespace tracksmith::system {

/// The form of a path that the system takes at any length: on Windows, where ordinary paths end at
/// 260 characters, one with the prefix that lifts this limit, if `path` needs it; else `path`
/// itself. For calls of the system, not to be shown.
std::filesystem::path ReachablePath(const std::filesystem::path& path);

} // namespace tracksmith::system
