#pragma once

#include <cstdint>
#include <span>

#include "base/message_host.h"

#include "app/health/check_health.h"
#include "app/session/session.h"

namespace tracksmith::health {

/// Repairing what the check of a song found.
inline constexpr session::ChangeKind kRepair{
    .name = Text{De{"Reparieren"}, En{"Repairing"}}, .takeBack = true, .playsOn = true};

/// The repairs themselves, on a song that nobody else uses, whose notes are paired before and
/// afterwards. Returns how many events were moved, put in or taken out. Throws std::bad_alloc.
std::int64_t RepairSong(song::Song& song, std::span<const Finding> findings,
                        const HealthOptions& options);

/// Mends what can be mended of `findings`, all in one change that can be taken back; the others are
/// passed over. What a finding names is looked for again, so old findings do no harm. Returns how
/// many events were moved, put in or taken out. Raises EMidiError when the song cannot be changed
/// now; on any exception it is as before.
std::int64_t Repair(session::Session& session, std::span<const Finding> findings,
                    const HealthOptions& options, MessageHost& host);

/// Mends everything that can be mended, also what comes to light by that, in one change that can be
/// taken back. As Repair otherwise.
std::int64_t RepairAll(session::Session& session, const HealthOptions& options, MessageHost& host);

} // namespace tracksmith::health
