#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "instruments/sysex/insertion_clock.h"
#include "instruments/sysex/operation_table.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/sysex_session.h"

namespace tracksmith::instruments {

/// What a message of the song does to the settings that stand before it.
enum class SetUpEffect : std::uint8_t {
    None,
    Resets,      ///< of the song's own, or taken out: what it undoes stays undone
    ChangesPart, ///< likewise for program and bank of one channel
    Undoes,      ///< put in: what it undoes is to be kept
    UndoesPart,  ///< likewise for program and bank of one channel
    Placed,      ///< put in, undoes nothing
};

struct SetUpMark {
    SetUpEffect effect = SetUpEffect::None;
    /// It was taken out, or the instrument does not understand it.
    bool removed = false;
    /// It stays in the song, so that what is done about it must not be done again.
    bool deaf = false;
    /// Of a message that resets.
    ResetKind reset = ResetKind::None;
    /// Of a message that changes a part.
    PartMode part;
};

/// Whether an instrument of this way follows a message of GS or XG part mode.
bool HearsPartMode(DrumWay way, SysexBytes data);

/// The messages that the operations put in or took out since CheckSysexs began, and those of the
/// song that the instrument does not understand, as they affect the settings.
class SetUpMarks {
public:
    /// Throws std::bad_alloc.
    SetUpMarks(song::Song& song, SysexSession& session);

    /// What a system-exclusive event does, also one of length 0.
    SetUpMark Of(song::EventLink event) const;

    /// Number of messages that were put in, or removed, and have an effect on settings.
    std::size_t Count() const { return count_; }

    /// When the instrument takes settings: the pauses behind all messages that were put in.
    std::int32_t ReadyMs(const InsertionClock& clock) const;

private:
    void Add(const SysexChange& change);
    void AddDeaf(song::Song& song, SysexSession& session, DrumWay way);

    std::unordered_map<std::uint32_t, SetUpMark> marks_;
    std::vector<song::EventLink> placed_;
    std::size_t count_ = 0;
};

} // namespace tracksmith::instruments
