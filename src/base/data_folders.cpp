#include "base/data_folders.h"

#include <system_error>

#include "base/system/known_folders.h"

namespace tracksmith {
namespace {

// Folders above the program that may hold a source tree with its build folder.
constexpr int kLevelsUp = 5;

// `inTree` is the folder of a source tree.
std::vector<std::filesystem::path> DataFolders(const char* inTree) {
    std::vector<std::filesystem::path> folders;
    std::filesystem::path folder = system::ProgramFolder();
    if (!folder.empty()) {
        folders.push_back(folder.parent_path() / "share" / "tracksmith");
        for (int level = 0; level <= kLevelsUp; ++level) {
            folders.push_back(folder / inTree);
            folder = folder.parent_path();
        }
    }
    folders.emplace_back("/usr/local/share/tracksmith");
    folders.emplace_back("/usr/share/tracksmith");
    return folders;
}

std::optional<std::filesystem::path> FirstOf(const std::vector<std::filesystem::path>& places) {
    for (const auto& place : places) {
        std::error_code ignored;
        if (std::filesystem::exists(place, ignored)) {
            return place;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::filesystem::path> FindData(const std::filesystem::path& name) {
    auto places = DataFolders("data");
    for (auto& place : places) {
        place /= name;
    }
    return FirstOf(places);
}

std::optional<std::filesystem::path> FindDocument(const std::filesystem::path& name) {
    std::vector<std::filesystem::path> places;
    for (const auto& folder : DataFolders("docs")) {
        places.push_back(folder / "docs" / name);
        places.push_back(folder / name);
    }
    return FirstOf(places);
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
