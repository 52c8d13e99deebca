#pragma once

#include <string>
#include <system_error>

#include "base/text.h"

namespace tracksmith {

/// Why the system refused a file access, as a sentence (UTF-8): in plain words for what users meet,
/// else what the system itself says. Empty when `error` is none.
std::string SystemReason(const std::error_code& error, Language language);

} // namespace tracksmith
