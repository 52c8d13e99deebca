#pragma once

#include <string>

#include "support/temporary_folder.h"

namespace tracksmith::test {

/// The variable of the environment that names the folder of the user's data.
#ifdef _WIN32
inline constexpr const char* kDataFolderVariable = "APPDATA";
#else
inline constexpr const char* kDataFolderVariable = "XDG_DATA_HOME";
#endif

/// Where a test with an empty `folder` of its own keeps settings: a file in it, or a key of the
/// Windows registry that is named like it.
inline std::filesystem::path SettingsPlace(const std::filesystem::path& folder) {
#ifdef _WIN32
    return "Software\\TracksmithTest" + folder.filename().string();
#else
    return folder / "settings.json";
#endif
}

} // namespace tracksmith::test
