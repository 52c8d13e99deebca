#include "app/song_folder.h"

#include <algorithm>
#include <utility>

#include "base/system/folder_listing.h"

#include "app/song_list.h"

namespace tracksmith::app {
namespace {

namespace fs = std::filesystem;

class FolderSearch {
public:
    explicit FolderSearch(const fs::path& top) : top_(top), open_{top} {}

    SongFolder Songs() {
        while (!open_.empty()) {
            const fs::path folder = std::move(open_.back());
            open_.pop_back();
            Read(folder);
        }
        std::ranges::sort(found_.songs, {}, &SongInFolder::relative);
        return std::move(found_);
    }

private:
    void Read(const fs::path& folder) {
        const system::FolderListing listing = system::ListFolder(folder);
        for (const fs::path& name : listing.names) {
            Take(folder / name);
        }
        if (listing.error) {
            found_.unread.push_back({folder, listing.error});
        }
    }

    void Take(const fs::path& entry) {
        std::error_code unknown;
        if (fs::symlink_status(entry, unknown).type() == fs::file_type::directory) {
            open_.push_back(entry);
        } else if (fs::is_regular_file(entry, unknown) && HasSongExtension(entry)) {
            found_.songs.push_back({entry, entry.lexically_relative(top_)});
        }
    }

    const fs::path& top_;
    std::vector<fs::path> open_;
    SongFolder found_;
};

} // namespace

SongFolder FindSongs(const fs::path& top) {
    return FolderSearch(top).Songs();
}

} // namespace tracksmith::app
