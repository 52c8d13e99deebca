#include "base/data_folders.h"

#include <system_error>

#include "base/system/known_folders.h"

namespace tracksmith {
namespace {

// Folders above the program that may hold a source tree with its build folder.
constexpr int kLevelsUp = 5;

std::vector<std::filesystem::path> DataFolders() {
    std::vector<std::filesystem::path> folders;
    std::filesystem::path folder = system::ProgramFolder();
    if (!folder.empty()) {
        folders.push_back(folder.parent_path() / "share" / "tracksmith");
        for (int level = 0; level <= kLevelsUp; ++level) {
            folders.push_back(folder / "data");
            folder = folder.parent_path();
        }
    }
    folders.emplace_back("/usr/local/share/tracksmith");
    folders.emplace_back("/usr/share/tracksmith");
    return folders;
}

} // namespace

std::optional<std::filesystem::path> FindData(const std::filesystem::path& name) {
    for (const auto& folder : DataFolders()) {
        std::error_code ignored;
        if (std::filesystem::exists(folder / name, ignored)) {
            return folder / name;
        }
    }
    return std::nullopt;
}

std::vector<std::filesystem::path> VoiceFolders() {
    std::vector<std::filesystem::path> folders;
    if (const auto own = system::UserDataFolder(); !own.empty()) {
        folders.push_back(own / "voices");
    }
    if (const auto shipped = FindData("voices")) {
        folders.push_back(*shipped);
    }
    return folders;
}

} // namespace tracksmith
