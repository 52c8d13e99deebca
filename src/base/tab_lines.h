#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// Reading the program's own tables: lines of columns that are separated by tabs. Any thread.
namespace tracksmith {

/// Takes the first line from `rest`, without its line feed and a carriage return before that.
inline std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

/// The columns of a line; nothing when there are more or fewer.
template <std::size_t Columns>
std::optional<std::array<std::string_view, Columns>> SplitColumns(std::string_view line) {
    std::array<std::string_view, Columns> fields;
    for (std::size_t column = 0; column < Columns; ++column) {
        const std::size_t end = line.find('\t');
        if ((end == std::string_view::npos) != (column + 1 == Columns)) {
            return std::nullopt;
        }
        fields[column] = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    }
    return fields;
}

} // namespace tracksmith
