#include "app/song_list.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/system/file_io.h"
#include "base/system/folder_listing.h"

namespace tracksmith::app {
namespace {

namespace fs = std::filesystem;

std::string InSmallLetters(const fs::path& path) {
    std::string text = system::PathText(path);
    std::ranges::transform(text, text.begin(), [](unsigned char c) {
        return static_cast<char>(c < 0x80 ? std::tolower(c) : c);
    });
    return text;
}

fs::path Whole(const fs::path& file) {
    std::error_code unknown;
    const fs::path whole = fs::absolute(file, unknown);
    return (unknown ? file : whole).lexically_normal();
}

std::vector<fs::path> SongsIn(const fs::path& folder) {
    std::vector<fs::path> songs;
    for (const fs::path& name : system::ListFolder(folder).names) {
        std::error_code unknown;
        if (HasSongExtension(name) && fs::is_regular_file(folder / name, unknown)) {
            songs.push_back(folder / name);
        }
    }
    std::ranges::sort(songs, [](const fs::path& a, const fs::path& b) {
        return std::pair(InSmallLetters(a), a) < std::pair(InSmallLetters(b), b);
    });
    return songs;
}

} // namespace

bool HasSongExtension(const fs::path& file) {
    constexpr std::array<std::string_view, 4> kExtensions{".mid", ".midi", ".kar", ".smf"};
    return std::ranges::find(kExtensions, InSmallLetters(file.extension())) != kExtensions.end();
}

void SongList::Take(const std::vector<fs::path>& songs) {
    taken_.clear();
    for (const fs::path& song : songs) {
        const fs::path whole = Whole(song);
        if (std::ranges::find(taken_, whole) == taken_.end()) {
            taken_.push_back(whole);
        }
    }
    askedFor_.clear();
}

std::vector<fs::path> SongList::SongsAround(const fs::path& open) const {
    const bool taken = taken_.size() > 1 && std::ranges::find(taken_, open) != taken_.end();
    return taken ? taken_ : SongsIn(open.parent_path());
}

std::optional<SongList::Entry> SongList::Step(const fs::path& open, int step) {
    const fs::path from = Waits() ? askedFor_ : Whole(open);
    const std::vector<fs::path> songs = SongsAround(from);
    const fs::path last = Waits() ? named_ : from;
    const auto place = std::ranges::find(songs, last);
    const auto at = place - songs.begin() + step;
    if (place == songs.end() || at < 0 || at >= std::ssize(songs)) {
        return std::nullopt;
    }
    const auto number = static_cast<std::size_t>(at);
    askedFor_ = from;
    named_ = songs[number];
    return Entry{named_, number + 1, songs.size()};
}

} // namespace tracksmith::app
