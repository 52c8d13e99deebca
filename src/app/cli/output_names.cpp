#include "app/cli/output_names.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "base/system/file_io.h"

namespace tracksmith::cli {
namespace {

namespace fs = std::filesystem;

fs::path Canonical(const fs::path& path) {
    std::error_code error;
    fs::path canonical = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? path : canonical;
}

} // namespace

OutputNames::OutputNames(fs::path folder, std::span<const InputFile> inputs)
    : folder_(std::move(folder)) {
    for (const InputFile& input : inputs) {
        if (!input.standardInput) {
            inputs_.insert(Canonical(input.path));
        }
    }
}

fs::path OutputNames::Next(const InputFile& input) {
    fs::path relative = input.relative;
    for (int number = 2; !Take(relative); ++number) {
        fs::path name = input.relative.stem();
        name += "-" + std::to_string(number);
        name += input.relative.extension();
        relative = input.relative.parent_path() / name;
    }
    return folder_ / relative;
}

bool OutputNames::IsInput(const fs::path& path) const {
    return inputs_.count(Canonical(path)) != 0;
}

bool OutputNames::Take(const fs::path& relative) {
    std::string key = system::PathText(relative.lexically_normal());
    std::transform(key.begin(), key.end(), key.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return used_.insert(key).second;
}

} // namespace tracksmith::cli
