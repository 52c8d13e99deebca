#pragma once

#include "app/health/check_health.h"
#include "app/health/finding_list.h"

namespace tracksmith::health {

/// Finds what is wrong with the settings of the channels, by playing the song once in order:
/// voices, resets, what is left on at the end, what was never set; also unclear texts and the most
/// notes at once. Throws std::bad_alloc.
void CheckChannels(const song::Song& song, const HealthOptions& options, FindingList& found);

} // namespace tracksmith::health
