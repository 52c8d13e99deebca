#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace tracksmith::health {

/// What can be wrong with a song. In the order in which findings are listed.
enum class Rule : std::uint8_t {
    NoteWithoutEnd,
    UnknownVoice,        ///< the instrument does not have it
    EarlyNotes,          ///< before the instrument is ready
    SettingsBeforeReset, ///< wiped by it and not set again
    SustainAtEnd,
    BendAtEnd,
    ProgramWithoutBank, ///< where no reset says which bank is in force
    NoProgram,          ///< notes on a channel without a program change
    Overlaps,           ///< of one channel and pitch
    NoteWithoutBeginning,
    ShortNotes,
    LengthenedNotes, ///< by loading
    NoVolume,
    SeveralResets,
    UnclearEncoding, ///< of lyrics, names and other texts
    ManyNotes,       ///< at once
    Count
};

inline constexpr std::size_t kRules = static_cast<std::size_t>(Rule::Count);

/// How bad it is: an error is heard, a warning may be, a hint is for whoever wants it perfect.
enum class Severity : std::uint8_t { Error, Warning, Hint };

/// The channel of what concerns all of them.
inline constexpr std::uint8_t kAllChannels = 0xFF;
/// Most places that a finding names; the count goes on.
inline constexpr std::size_t kMostPlaces = 1000;

/// One kind of fault on one channel.
struct Finding {
    Rule rule = Rule::Count;
    Severity severity = Severity::Hint;
    /// 0-15, or kAllChannels.
    std::uint8_t channel = kAllChannels;
    /// How often.
    std::int64_t count = 0;
    /// Where, in ticks, in order; empty where it is nowhere in particular.
    std::vector<std::int32_t> ticks;
    /// The bend against its centre, the most notes at once, or the settings that are lost.
    std::int32_t value = 0;
    /// There is a repair that changes nothing else than this.
    bool repairable = false;
};

/// Stable name of a rule for programs, for example "noteWithoutEnd".
std::string_view RuleName(Rule rule);
/// "error", "warning", "hint".
std::string_view SeverityName(Severity severity);
/// The word for the user.
const Text& SeverityText(Severity severity);

/// What it is, in a few words; `instrument` is what the song was checked against.
std::string Title(const Finding& finding, std::string_view instrument, Language language);
/// What it means to a musician, in one or two sentences.
std::string Explanation(const Finding& finding, Language language);
/// What its repair changes; empty where there is none.
std::string WhatWouldChange(const Finding& finding, Language language);
/// The repair in a word or two, for a button.
const Text& RepairText(Rule rule);

} // namespace tracksmith::health
