#include "base/system/file_io.h"

namespace tracksmith::system {

std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace tracksmith::system
