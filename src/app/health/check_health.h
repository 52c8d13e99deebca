#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "app/health/finding.h"
#include "app/health/finding_list.h"
#include "app/session/workspace.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::health {

/// What a song is checked against.
struct HealthOptions {
    /// Null where no voices are to be looked for.
    const instruments::VoiceTables* voices = nullptr;
    /// The instrument that the song is to be played on; none for any.
    std::optional<instruments::InstrumentId> instrument;
    instruments::LookupOptions lookup;
    /// Notes shorter than so many ticks are named.
    std::int32_t shortNote = song::kUsualNoteLength;
};

/// What was found in a song.
struct HealthReport {
    /// By severity, then by rule, then by channel.
    std::vector<Finding> findings;
    /// Of each Severity.
    std::array<std::int64_t, 3> counts{};

    /// Number of findings that RepairAll mends.
    std::size_t Repairable() const;
};

class ChannelCheck;

/// Checks a song in steps, so that nobody waits for a large one. The notes must be paired and the
/// song have a time map; it must not be changed until the last step is done. Data bytes may be
/// written between the steps.
class HealthCheck {
public:
    /// `workspace` must outlive the check.
    HealthCheck(const session::Workspace& workspace, const HealthOptions& options);
    HealthCheck(const HealthCheck&) = delete;
    HealthCheck& operator=(const HealthCheck&) = delete;
    ~HealthCheck();

    /// Looks at about `events` events more, at the notes of a track all at once. True when there is
    /// nothing left to look at. Throws std::bad_alloc.
    [[nodiscard]] bool Step(std::size_t events);
    /// What was found; once, after the last step.
    HealthReport Take();

private:
    const session::Workspace& workspace_;
    HealthOptions options_;
    FindingList found_;
    std::size_t track_ = 0;
    std::unique_ptr<ChannelCheck> channels_;
};

/// Checks the song; changes nothing. The notes must be paired and the song have a time map. Two
/// walks over its events. Ignored tracks are left out. Throws std::bad_alloc.
HealthReport CheckHealth(const session::Workspace& workspace, const HealthOptions& options);

} // namespace tracksmith::health
