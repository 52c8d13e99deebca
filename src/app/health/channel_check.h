#pragma once

#include <cstddef>
#include <memory>

#include "app/health/check_health.h"
#include "app/health/finding_list.h"

namespace tracksmith::health {

class ChannelWalk;

/// Finds what is wrong with the settings of the channels, by playing the song once in order:
/// voices, resets, what is left on at the end, what was never set; also unclear texts and the most
/// notes at once.
class ChannelCheck {
public:
    /// All must outlive the check. Throws std::bad_alloc, as Step does.
    ChannelCheck(const song::Song& song, const HealthOptions& options, FindingList& found);
    ChannelCheck(const ChannelCheck&) = delete;
    ChannelCheck& operator=(const ChannelCheck&) = delete;
    ~ChannelCheck();

    /// Looks at `events` events more, with what is found at the end behind the last. True when
    /// there are no more.
    [[nodiscard]] bool Step(std::size_t events);

private:
    std::unique_ptr<ChannelWalk> walk_;
};

} // namespace tracksmith::health
