#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace tracksmith::system {

/// What lies in a folder.
struct FolderListing {
    /// Names of the entries without the folder, in no order.
    std::vector<std::filesystem::path> names;
    /// The folder is there but could not be read, or not to its end.
    bool failed = false;
    /// The system's reason then.
    std::error_code error;
};

/// Lists a folder; nothing for one that does not exist. Throws std::bad_alloc only, where the
/// iterator of the standard library may end the program instead.
FolderListing ListFolder(const std::filesystem::path& folder);

} // namespace tracksmith::system
