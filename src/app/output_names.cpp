#include "app/output_names.h"

#include <algorithm>
#include <cctype>
#include <system_error>
#include <utility>

#include "base/system/file_io.h"
#include "base/system/reachable_path.h"

#include "app/save_song.h"

namespace tracksmith::app {

namespace fs = std::filesystem;

OutputNames::OutputNames(fs::path folder, std::span<const fs::path> inputs)
    : folder_(std::move(folder)) {
    for (const fs::path& input : inputs) {
        inputs_.insert(PlainPath(input));
    }
}

fs::path OutputNames::Next(const fs::path& relative) {
    fs::path free = relative;
    for (int number = 2; !Take(free); ++number) {
        fs::path name = relative.stem();
        name += "-" + std::to_string(number);
        name += relative.extension();
        free = relative.parent_path() / name;
    }
    return folder_ / free;
}

bool OutputNames::IsInput(const fs::path& path) const {
    return inputs_.count(PlainPath(path)) != 0;
}

bool OutputNames::Take(const fs::path& relative) {
    std::string key = system::PathText(relative.lexically_normal());
    std::transform(key.begin(), key.end(), key.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return used_.insert(key).second;
}

fs::path PlainPath(const fs::path& path) {
    std::error_code error;
    fs::path plain = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? path : plain;
}

void WriteResult(const fs::path& file, std::span<const std::uint8_t> bytes, MessageHost& host) {
    std::error_code ignored; // writing reports what cannot be created
    fs::create_directories(system::ReachablePath(file.parent_path()), ignored);
    WriteMidiFile(file, bytes, host);
}

} // namespace tracksmith::app
