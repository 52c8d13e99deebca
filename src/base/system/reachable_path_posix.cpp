#include "base/system/reachable_path.h"

namespace tracksmith::system {

std::filesystem::path ReachablePath(const std::filesystem::path& path) {
    return path;
}

} // namespace tracksmith::system
