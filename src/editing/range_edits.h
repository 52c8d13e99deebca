#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "editing/music_state.h"
#include "editing/note_scan.h"
#include "editing/range_position.h"
#include "song/note_balance.h"
#include "song/song.h"

namespace tracksmith::editing {

/// What cutting or copying a range did at its seams.
struct SeamReport {
    /// Notes that were ended there, and begun again.
    std::int64_t closed = 0;
    std::int64_t begunAgain = 0;
    /// Messages that carry the state of the song over a seam.
    std::int64_t carried = 0;
    /// These messages; of a copy those at its beginning before those at its end.
    CarriedState settings;
    /// The balance of the song's notes afterwards.
    song::BalanceReport balance;
};

/// Tick of the song's first note; nothing where it has none.
std::optional<std::int32_t> FirstNoteTick(const song::Song& song);

/// Whether a range may be cut: behind the beginning of the first note, or wholly inside the empty
/// measures before it and without settings or messages.
bool MayDelete(const song::Song& song, const TickRange& range);

/// Cuts the range out of all tracks and closes the gap. Notes that are cut through end just before
/// the seam and begin again at it when they sound across the range's end; program, controllers,
/// parameters, bend, pressure, modes, tempo, metre and key that the range has set are set at the
/// seam. The song's length is found anew; times and zones are left to UpdateTimeZoneData.
/// `listener` is told about doubled notes before anything is changed. Linear. Throws std::bad_alloc
/// with the song half changed.
SeamReport DeleteRange(song::Song& song, const TickRange& range,
                       const NoteFaultListener& listener = {});

/// Whether the song stays short enough when the range is copied.
bool HasRoomFor(const song::Song& song, const TickRange& range);

/// Inserts a copy of the range at its destination in all tracks; what stands there moves later.
/// Notes that sound at the destination end before it and begin again behind the copy, those of the
/// copy end with it, those that sound into the range begin with the copy. With `bringState` the
/// copy plays with the voices, settings and tempo of its source, and the song goes on behind it
/// with its own. Everything else as in DeleteRange.
SeamReport CopyRange(song::Song& song, const TickRange& range, bool bringState,
                     const NoteFaultListener& listener = {});

} // namespace tracksmith::editing
