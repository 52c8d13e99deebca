#pragma once

#include <filesystem>
#include <optional>

namespace tracksmith::forms {

/// The demo song that comes with the program: beside the program, in the shared data folder of its
/// installation, or in the source tree above it. Empty when it is in none of them.
std::optional<std::filesystem::path> FindDemoSong();

} // namespace tracksmith::forms
