#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Columns of a table for people; a column is as wide as its characters (UTF-8), not its bytes.
namespace tracksmith::cli {

/// Number of characters.
std::size_t Width(const std::string& text);

/// `text` at the left of a column of at least `width` characters.
std::string Left(std::string text, std::size_t width);

/// `text` at the right of it.
std::string Right(const std::string& text, std::size_t width);

/// `words` with blanks between.
std::string Joined(const std::vector<std::string>& words);

} // namespace tracksmith::cli
