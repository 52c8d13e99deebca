#pragma once

#include <string>

#include "base/text.h"

#include "instruments/sysex/sysex_templates.h"

namespace tracksmith::instruments {

/// What a message is, in words (UTF-8).
struct SysexDescription {
    std::string german;
    std::string english;

    const std::string& In(Language language) const {
        return language == Language::German ? german : english;
    }
};

/// Names the maker and, as far as it is published, the meaning of a message, given with its F0:
/// "XG System On", "GS: rhythm part, channel 10, value 01", "Ketron, 6 bytes". Numbers of devices,
/// models, addresses and values are hexadecimal. Says so when the message is not terminated or its
/// Roland checksum is wrong. Any bytes of any length; any thread.
SysexDescription DescribeSysex(SysexBytes message);

} // namespace tracksmith::instruments
