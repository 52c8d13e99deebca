#include "app/backups/crash_records.h"

#include <algorithm>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/system/file_io.h"
#include "base/system/folder_listing.h"

namespace tracksmith::backups {
namespace {

constexpr const char* kTold = "CrashTold";

// Their names hold the time, so that the order of names is that of time.
std::vector<std::string> NewestFirst(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const std::filesystem::path& name : system::ListFolder(folder).names) {
        std::string text = system::PathText(name);
        if (text.starts_with("crash-") && text.ends_with(".dmp")) {
            names.push_back(std::move(text));
        }
    }
    std::ranges::sort(names, std::greater<>());
    return names;
}

} // namespace

std::optional<std::filesystem::path> TakeUntoldCrash(settings::SettingsStore& store,
                                                     const std::filesystem::path& folder) {
    const std::vector<std::string> names = NewestFirst(folder);
    for (std::size_t each = kMostCrashRecords; each < names.size(); ++each) {
        std::error_code ignored; // one that cannot go yet goes at the next start
        std::filesystem::remove(folder / names[each], ignored);
    }
    if (names.empty() || names.front() <= store.ReadStrFromUserRegistry(kTold, "")) {
        return std::nullopt;
    }
    store.WriteStrToUserRegistry(kTold, names.front());
    return folder / names.front();
}

} // namespace tracksmith::backups
