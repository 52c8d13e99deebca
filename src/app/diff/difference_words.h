#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

#include "app/diff/difference.h"
#include "song/song.h"

namespace tracksmith::diff {

/// A difference in words (UTF-8), safe to show.
struct DifferenceWords {
    /// "Voice", "Controller" ...
    std::string kind;
    /// Place in the later song, as the position display has it.
    std::string position;
    /// How it was and how it is.
    std::string before;
    std::string after;
    /// Which tools may have done it; empty where nobody knows.
    std::string doneBy;
};

/// Names the voice of a channel (0-15) by its program and what is known of its bank; empty when it
/// has no name.
using VoiceNamer =
    std::function<std::string(std::uint8_t channel, std::optional<std::uint8_t> msb,
                              std::optional<std::uint8_t> lsb, std::uint8_t program)>;

/// How differences are put into words.
struct Wording {
    Language language = Language::English;
    /// None gives the numbers of voices alone.
    VoiceNamer voiceName{};
    /// Names the tools that have done it; none where that is not known.
    std::function<std::string(const Difference&)> doneBy{};
};

/// `before` and `after` are the songs that were compared.
DifferenceWords WordsOf(const Difference& difference, const song::TimeMap& before,
                        const song::TimeMap& after, const Wording& wording);

/// "Whole song", "Channel 3".
std::string ChannelWords(std::uint8_t channel, Language language);

/// The word for several of a kind, and its name for programs.
std::string_view KindWord(Kind kind, Language language);
std::string_view KindName(Kind kind);
/// Name of a change for programs, such as "endsMoved".
std::string_view ChangeName(Change change);

/// All differences as text for people, grouped by channel; one line each.
std::string DifferencesText(const Differences& differences, const song::TimeMap& before,
                            const song::TimeMap& after, const Wording& wording);

} // namespace tracksmith::diff
