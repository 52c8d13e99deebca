#include <string_view>
#include <windows.h>

#include "base/system/folder_listing.h"
#include "base/system/reachable_path.h"

namespace tracksmith::system {
namespace {

// Ends a search when the scope ends.
class Search {
public:
    explicit Search(HANDLE handle) : handle_(handle) {}
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    ~Search() {
        if (Valid()) {
            FindClose(handle_);
        }
    }
    bool Valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }

private:
    HANDLE handle_;
};

} // namespace

FolderListing ListFolder(const std::filesystem::path& folder) {
    FolderListing listing;
    WIN32_FIND_DATAW entry{};
    const Search search(FindFirstFileW((ReachablePath(folder) / L"*").c_str(), &entry));
    if (!search.Valid()) {
        const DWORD error = GetLastError();
        listing.error = {static_cast<int>(error), std::system_category()};
        listing.failed = error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
        return listing;
    }
    do {
        const std::wstring_view name(entry.cFileName);
        if (name != L"." && name != L"..") {
            listing.names.emplace_back(name);
        }
    } while (FindNextFileW(search.Get(), &entry) != 0);
    const DWORD end = GetLastError();
    listing.failed = end != ERROR_NO_MORE_FILES;
    listing.error = {listing.failed ? static_cast<int>(end) : 0, std::system_category()};
    return listing;
}

} // namespace tracksmith::system
