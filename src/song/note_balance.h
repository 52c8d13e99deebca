#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/text.h"

#include "song/song.h"

namespace tracksmith::song {

/// A channel and pitch of a track that has more note-ons than note-offs, or fewer.
struct UnbalancedNote {
    /// Channel 0-15.
    std::uint8_t channel = 0;
    std::uint8_t note = 0;
    /// The note-off that was one too many, or the last note-on.
    std::int32_t tick = 0;
};

/// What the balance of note-ons and note-offs found: the faults of one track, the first that has
/// any.
struct BalanceReport {
    /// That track, counted from 0; -1 where every checked track is balanced.
    std::int32_t track = -1;
    /// Both by channel and then by note.
    std::vector<UnbalancedNote> offsWithoutOns;
    std::vector<UnbalancedNote> onsWithoutOffs;

    bool Balanced() const { return track < 0; }
};

/// Counts note-ons against note-offs by channel and pitch, track by track, ignored ones left out;
/// the first track with a fault is the last that is looked at. Removed events (length 0) count as
/// absent.
BalanceReport CheckForNoteOnsNoteOffs(const Song& song);

/// The report as a plain text: a summary for each kind of fault and a line for each note. Positions
/// are those of `song`, which must have a time map.
std::string BalanceText(const Song& song, const BalanceReport& report, Language language);

/// What the name of a file with that text ends in.
inline constexpr const char* kBalanceFileEnding = "_NoteOnOff.txt";

} // namespace tracksmith::song
