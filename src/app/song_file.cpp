#include "app/song_file.h"

#include "song/event_walker.h"

namespace tracksmith::app {

std::optional<std::vector<std::uint8_t>> ReadSongFile(const std::filesystem::path& file,
                                                      const system::ReadProgress& progress) {
    system::FileStart start = system::ReadFileStart(file, kFileStartBytes);
    if (start.error || start.size > system::kMostFileBytes) {
        return std::nullopt;
    }
    if (start.size <= start.bytes.size() || !song::BeginsLikeSong(start.bytes)) {
        return std::move(start.bytes);
    }
    return system::ReadRegularFile(file, progress);
}

} // namespace tracksmith::app
