#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace tracksmith {

/// The first `name` below the folders where the program's own data may lie: beside the installed
/// program, in the source tree that it was built in, among the system's shared data. Nothing when
/// none of them has it.
std::optional<std::filesystem::path> FindData(const std::filesystem::path& name);

/// The same for a page of the documentation, such as the user guide: `docs` in the folder of the
/// installed data, or in the source tree.
std::optional<std::filesystem::path> FindDocument(const std::filesystem::path& name);

/// Folders of voice tables; the user's own comes first and need not exist.
std::vector<std::filesystem::path> VoiceFolders();

} // namespace tracksmith
