#pragma once

#include "base/text.h"

/// Texts about the components of the programs.
namespace tracksmith::app::texts {

inline constexpr Text kLicence{De{"Freie Software unter der MIT-Lizenz."},
                               En{"Free software under the MIT licence."}};
inline constexpr Text kComponents{De{"Komponenten anderer und ihre Lizenzen:"},
                                  En{"Components by others and their licences:"}};

} // namespace tracksmith::app::texts
