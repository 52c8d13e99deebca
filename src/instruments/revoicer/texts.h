#pragma once

#include <string_view>

#include "base/text.h"

/// Texts of the auto revoicer.
namespace tracksmith::instruments::texts {

inline constexpr std::string_view kProgramName = "Tracksmith";
inline constexpr Text kMissingLsbChannel{De{": Kanal "}, En{": channel "}};
inline constexpr Text kMissingLsb{De{" - Ctrl32 fehlt!"}, En{" - Ctrl32 is missing!"}};

} // namespace tracksmith::instruments::texts
