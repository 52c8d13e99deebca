#pragma once

#include "app/diff/difference.h"
#include "song/song.h"

namespace tracksmith::diff {

/// How `after` differs from `before`, by channel and kind. On which track an event stands does not
/// matter, nor do ports and what is not saved. Where measures were cut, copied or put in, that is
/// one difference, and what follows is compared at its new place. Both songs need a time map; the
/// time grows with their events. Any thread, as long as nobody changes them. Throws std::bad_alloc.
Differences CompareSongs(const song::Song& before, const song::Song& after);

} // namespace tracksmith::diff
