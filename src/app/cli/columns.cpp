#include "app/cli/columns.h"

#include <algorithm>

namespace tracksmith::cli {

std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

std::string Left(std::string text, std::size_t width) {
    text.append(width - std::min(width, Width(text)), ' ');
    return text;
}

std::string Right(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, Width(text)), ' ') + text;
}

std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words) {
        joined.append(joined.empty() ? "" : " ").append(word);
    }
    return joined;
}

} // namespace tracksmith::cli
