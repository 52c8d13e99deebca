#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// A rule for replacing a voice: program changes to the source voice become ones to the target.
struct RevoiceEntry {
    VoiceNumbers target;
    std::string targetName;
    VoiceNumbers source;
    std::string sourceName;

    friend bool operator==(const RevoiceEntry&, const RevoiceEntry&) = default;
};

/// The entry that a stored line holds: target MSB, LSB, program and name, source MSB, LSB, program
/// and name, separated by tabs. Nothing for another number of fields or numbers out of 0 to 127.
std::optional<RevoiceEntry> ReadRevoiceEntry(std::string_view line);

/// The line for an entry; tabs and line ends in names become blanks.
std::string RevoiceLine(const RevoiceEntry& entry);

} // namespace tracksmith::instruments
