#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

namespace tracksmith::app {

/// Whether the name of `file` is that of a song: .mid, .midi, .kar or .smf, in any case.
bool HasSongExtension(const std::filesystem::path& file);

/// The songs that the user goes through one after the other: those that were handed over together,
/// else all in the folder of the open one, by name.
class SongList {
public:
    /// A song of the list and where it stands in it.
    struct Entry {
        std::filesystem::path file;
        /// From 1.
        std::size_t number = 0;
        std::size_t count = 0;
    };

    /// From now on the list is `songs`, each once; one alone stands for its folder.
    void Take(const std::vector<std::filesystem::path>& songs);

    /// A song was opened, from the list or not.
    void Opened() { askedFor_.clear(); }

    /// The song that was named last has not been opened, as it could not be read.
    bool Waits() const { return !askedFor_.empty(); }

    /// The song `step` (1 or -1) places from `open`; nothing at the ends. While it waits, from the
    /// song that was named last, and `open` may be empty. The folder is read anew each time. Throws
    /// std::bad_alloc.
    std::optional<Entry> Step(const std::filesystem::path& open, int step);

private:
    std::vector<std::filesystem::path> SongsAround(const std::filesystem::path& open) const;

    std::vector<std::filesystem::path> taken_;
    std::filesystem::path askedFor_;
    std::filesystem::path named_;
};

} // namespace tracksmith::app
