#pragma once

#include <cstdint>

#include "base/text.h"

#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {

/// Which family of instruments a message speaks to.
enum class SysexFamily : std::uint8_t {
    None, // empty
    Gm,
    Gm2,
    Gs,
    Xg,
    Roland, // other than GS
    Yamaha, // other than XG
    Korg,
    Ketron,
    Technics,
    Universal, // other than GM and GM2
    Other,
    Count
};

/// The family of a message, given with its F0. Any bytes, any thread.
SysexFamily SysexFamilyOf(SysexBytes message);

/// Its name.
const Text& FamilyName(SysexFamily family);

} // namespace tracksmith::instruments
