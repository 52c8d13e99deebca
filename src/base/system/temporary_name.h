#pragma once

#include <string>
#include <string_view>

namespace tracksmith::system {

/// A new name for a file that is to replace another one: hidden, random, the same for no two calls
/// except by chance.
std::string RandomTemporaryName();

/// True for names that this program gives to such files, also those of earlier versions.
bool IsTemporaryName(std::string_view name);

} // namespace tracksmith::system
