#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "instruments/picker/patch_state.h"

namespace tracksmith::instruments {

/// Writes the voice `numbers` into the song at the places `changes` of the channel (indices of
/// SongPatches::Changes, in any order): the events that select it there are rewritten and keep
/// their ticks; bank selects that are missing go directly before the program change, on its track
/// and tick. The places that are not named keep the voice that they have: one that relied on a bank
/// that is rewritten gets bank selects of its own. Where the voice is the one in force nothing is
/// added. Places that do not exist are passed over.
///
/// A channel without any program change gets all three events, bank MSB, bank LSB and program, on
/// the track of its first note: behind the set-up messages where there is room, else directly
/// before that note (see PlaceForVoice); `changes` does not count then. Nothing is added for a
/// channel of which the song has no event.
///
/// `start` are the banks before any bank select. Times and links must be rebuilt afterwards. Throws
/// std::bad_alloc; the song may be changed in part then.
void WriteVoice(song::Song& song, std::size_t channel, std::span<const std::size_t> changes,
                VoiceNumbers numbers, const StartBanks& start = {});

} // namespace tracksmith::instruments
