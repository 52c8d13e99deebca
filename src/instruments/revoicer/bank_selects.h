#pragma once

#include <cstddef>

#include "instruments/picker/patch_state.h"
#include "instruments/revoicer/revoice_song.h"
#include "song/song.h"

namespace tracksmith::instruments {

/// Gives each program change of the channels bank selects of its own, with the values in force,
/// directly before it on its track, where there is none between it and the one before it; so that
/// revoicing can change each by itself and the song sounds as before. `start` are the banks before
/// any bank select. Returns how many program changes got some. Links must be rebuilt afterwards.
/// Throws std::bad_alloc; the song may be changed in part then.
std::size_t AddMissingBankSelects(song::Song& song, const RevoiceRule& rule,
                                  const StartBanks& start = {});

} // namespace tracksmith::instruments
