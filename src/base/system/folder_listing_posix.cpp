#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <new>

#include "base/system/folder_listing.h"

namespace tracksmith::system {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

FolderListing ListFolder(const std::filesystem::path& folder) {
    FolderListing listing;
    const std::unique_ptr<DIR, CloseFolder> open(opendir(folder.c_str()));
    if (open == nullptr) {
        if (errno == ENOMEM) {
            throw std::bad_alloc();
        }
        listing.failed = errno != ENOENT;
        listing.error = {errno, std::system_category()};
        return listing;
    }
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(open.get()); // NOLINT(concurrency-mt-unsafe): own stream
        if (entry == nullptr) {
            listing.failed = errno != 0;
            listing.error = {errno, std::system_category()};
            return listing;
        }
        const char* name = entry->d_name;
        if (std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) {
            listing.names.emplace_back(name);
        }
    }
}

} // namespace tracksmith::system
