#pragma once

#include <string>
#include <vector>

#include "base/text.h"

/// What the command line needs from the system it runs on.
namespace tracksmith::cli {

/// Prepares the standard streams: UTF-8 text, unchanged bytes, and a closed pipe that shows as a
/// failed write instead of ending the program. Call once at the start of the program.
void SetUpConsole();

/// The arguments behind the program's name as UTF-8.
std::vector<std::string> ProgramArguments(int count, const char* const* values);

/// The language that the user's system is set to; English for all but German.
Language SystemLanguage();

/// True when a person reads the standard error at a terminal.
bool ErrorIsTerminal();

} // namespace tracksmith::cli
