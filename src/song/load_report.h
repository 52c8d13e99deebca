#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/text.h"

namespace tracksmith::song {

/// What reading a file can do to its contents.
enum class LoadChange : std::uint8_t {
    NoteOnVelocityZero,   ///< note-on with velocity 0 stored as note-off
    PortEventDropped,     ///< meta 0x21; every track gets a port event of its own
    ChannelPrefixDropped, ///< meta 0x20
    SequenceNumberDropped,
    UnknownMetaDropped,
    EmptySysexDropped,
    EscapeDropped,     ///< 0xF7 packets
    SystemDropped,     ///< 0xF8 to 0xFC
    NameBlanked,       ///< a later track name on the first track
    TempoZeroReplaced, ///< calculated as 120 BPM
    DataByteTooLarge,  ///< second data byte above 127, masked when sent or saved
    EndOfTrackMoved,
    EndOfTrackAdded,
    BytesAfterEndOfTrack, ///< count in bytes
    BytesAfterLastTrack,  ///< count in bytes
    FormatChanged,        ///< one track declared as format 1 or 2 is held as format 0
    SplitIntoChannels,    ///< format 0 split into channel tracks
    TrackIgnored,         ///< by its name
    NotesLengthened,      ///< notes given the minimum length
    Count
};

inline constexpr std::size_t kLoadChangeCount = static_cast<std::size_t>(LoadChange::Count);

/// What reading a file dropped, moved or changed, by kind.
struct LoadReport {
    std::array<std::int64_t, kLoadChangeCount> counts{};

    void Add(LoadChange change, std::int64_t number = 1) {
        counts[static_cast<std::size_t>(change)] += number;
    }
    std::int64_t operator[](LoadChange change) const {
        return counts[static_cast<std::size_t>(change)];
    }
    /// Number of kinds that occurred.
    std::size_t Kinds() const;
    /// The kinds that take something away or change what is heard, with their numbers.
    LoadReport Losses() const;
};

/// Stable machine name of a change, for example "portEventDropped".
const char* LoadChangeName(LoadChange change);

/// What the change is, for the user; its number is shown beside it.
const Text& LoadChangeText(LoadChange change);

} // namespace tracksmith::song
