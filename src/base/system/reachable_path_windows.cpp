#include <string>
#include <windows.h>

#include "base/system/reachable_path.h"

namespace tracksmith::system {
namespace {

// Of a folder, which must leave room for a short name of a file in it.
constexpr std::size_t kMostOrdinary = MAX_PATH - 14;

// Without "." and "..", which the prefix would take for names; empty when the system does not tell.
std::wstring FullPath(const std::wstring& path) {
    const DWORD units = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(units, L'\0');
    full.resize(units == 0 ? 0 : GetFullPathNameW(path.c_str(), units, full.data(), nullptr));
    return full;
}

} // namespace

std::filesystem::path ReachablePath(const std::filesystem::path& path) {
    const std::wstring& given = path.native();
    if (given.empty() || given.starts_with(LR"(\\?\)") || given.starts_with(LR"(\\.\)")) {
        return path;
    }
    const std::wstring full = FullPath(given);
    if (full.size() < kMostOrdinary) {
        return path;
    }
    return full.starts_with(LR"(\\)") ? LR"(\\?\UNC)" + full.substr(1) : LR"(\\?\)" + full;
}

} // namespace tracksmith::system
