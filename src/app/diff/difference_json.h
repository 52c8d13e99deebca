#pragma once

#include <string>

#include "app/diff/difference_words.h"

namespace tracksmith::diff {

/// All differences as one JSON object without line end: schema 1, `same`, `counts` by kind, and
/// `rows` with channel (from 1, null for the whole song), kind, change, control, count, tick and
/// position of the first place in the later song, all ticks, values and texts before and after, and
/// `doneBy` where `wording` names the tools.
/// `fileBefore` and `fileAfter` name the songs.
std::string DifferencesJson(const Differences& differences, const song::TimeMap& before,
                            const song::TimeMap& after, const std::string& fileBefore,
                            const std::string& fileAfter, const Wording& wording);

} // namespace tracksmith::diff
