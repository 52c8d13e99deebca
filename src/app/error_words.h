#pragma once

#include <exception>
#include <string>

#include "base/text.h"

namespace tracksmith::app {

/// What an exception that no command expects tells the user (UTF-8).
std::string ErrorWords(const std::exception& error, Language language);

} // namespace tracksmith::app
