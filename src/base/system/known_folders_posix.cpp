#include <cstdlib>
#include <system_error>

#include "base/system/known_folders.h"

namespace tracksmith::system {
namespace {

// XDG Base Directory: a relative path counts as not set.
std::filesystem::path FolderFrom(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? std::filesystem::path(value)
                                             : std::filesystem::path();
}

} // namespace

std::filesystem::path ProgramFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : program.parent_path();
}

std::filesystem::path UserDataFolder() {
    if (const auto data = FolderFrom("XDG_DATA_HOME"); !data.empty()) {
        return data / "tracksmith";
    }
    const auto home = FolderFrom("HOME");
    return home.empty() ? home : home / ".local" / "share" / "tracksmith";
}

} // namespace tracksmith::system
