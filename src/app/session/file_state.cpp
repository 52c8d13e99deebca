#include "app/session/file_state.h"

#include <system_error>

#include "base/system/reachable_path.h"

namespace tracksmith::session {

std::optional<FileStamp> StampOf(const std::filesystem::path& file) {
    std::error_code noTime;
    std::error_code noSize;
    const std::filesystem::path path = system::ReachablePath(file);
    const FileStamp stamp{std::filesystem::last_write_time(path, noTime),
                          std::filesystem::file_size(path, noSize)};
    return noTime || noSize ? std::nullopt : std::optional(stamp);
}

FileState LoadedFile(const std::filesystem::path& file, bool isDemo) {
    return {.name = isDemo ? std::filesystem::path() : file,
            .source = file,
            .isDemo = isDemo,
            .format = SaveFormat::AsSong,
            .stamp = StampOf(file)};
}

} // namespace tracksmith::session
