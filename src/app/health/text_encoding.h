#pragma once

#include <string_view>

namespace tracksmith::health {

/// True where nobody can say in which encoding `bytes` are: they are not UTF-8, and read as
/// Windows-1252 they have signs that no text has, or hardly any plain letter.
bool IsUnclearText(std::string_view bytes);

} // namespace tracksmith::health
