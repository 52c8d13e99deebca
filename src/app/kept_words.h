#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

#include "instruments/preparation.h"

/// What preparing a song did so that it sounds as before, in words.
namespace tracksmith::app {

/// What happened to the settings of a song, what could not be kept first.
enum class KeptKind : std::uint8_t {
    EarlyNotes,    ///< notes that begin before the instrument is ready
    Lost,          ///< settings that could not be put back
    LostDrumNotes, ///< notes that change from drums to melody or back
    Moved,         ///< settings behind the reset
    Repeated,      ///< settings that are there twice
    Undone,        ///< values of a reset that was taken out
    Parts,         ///< channels that were made drums, or melody, in the instrument's way
    Messages,      ///< set-up messages behind the reset
    Count
};

/// How often something happened, and on which channels.
struct KeptSum {
    std::int64_t count = 0;
    /// Channels counted from 1, in their order; empty for set-up messages.
    std::vector<int> channels;
};

using KeptSums = std::array<KeptSum, static_cast<std::size_t>(KeptKind::Count)>;

/// The sums over all channels, by KeptKind.
KeptSums SumsOf(const instruments::PreparationReport& report);

/// Name of a kind for programs, for example "earlyNotes".
std::string_view KeptName(KeptKind kind);

/// One sentence for each kind that happened, in the order of KeptKind, for example "12 settings
/// moved behind the reset (channels 1, 2, 10)". Empty when nothing happened.
std::vector<std::string> KeptLines(const instruments::PreparationReport& report, Language language);

} // namespace tracksmith::app
