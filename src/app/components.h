#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace tracksmith::app {

/// Which of the two programs asks.
enum class Program { Windows, CommandLine };

/// Name and version of the program (such as "tracksmith 0.1.0"), its licence, and each component by
/// others that it is built from or works with, with its licence: a line each, as plain text.
std::string VersionText(std::string_view nameAndVersion, Program program, Language language);

/// The lines about the components alone.
std::string ComponentLines(Program program, Language language);

} // namespace tracksmith::app
