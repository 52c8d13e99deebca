#include <array>
#include <windows.h>

#include "base/system/known_folders.h"

namespace tracksmith::system {
namespace {

constexpr std::size_t kMostPath = 32'768;

} // namespace

std::filesystem::path ProgramFolder() {
    std::array<wchar_t, kMostPath> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return length == 0 || length >= path.size()
               ? std::filesystem::path()
               : std::filesystem::path(path.data(), path.data() + length).parent_path();
}

std::filesystem::path UserDataFolder() {
    std::array<wchar_t, kMostPath> path{};
    const DWORD length =
        GetEnvironmentVariableW(L"APPDATA", path.data(), static_cast<DWORD>(path.size()));
    return length == 0 || length >= path.size()
               ? std::filesystem::path()
               : std::filesystem::path(path.data(), path.data() + length) / "Tracksmith";
}

} // namespace tracksmith::system
