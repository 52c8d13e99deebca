#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/message_host.h"

#include "app/cli/cli_context.h"
#include "app/session/session.h"

namespace tracksmith::cli {

/// How a song is to be played.
struct PlayPlan {
    /// The output as the user named it; empty for the usual one.
    std::string port;
    std::int32_t fromTick = 0;
    /// Nothing at or behind this tick is played; nothing for the whole rest.
    std::optional<std::int32_t> toTick;
    bool loop = false;
    /// Quarter notes per minute against the song's tempos.
    std::int32_t tempoOffset = 0;
};

/// Plays the song until its end or that of the plan, or until the user interrupts; then all notes
/// have been ended. Faults are shown through `host`. Returns kOk, kUsage for a loop that is too
/// short, kPortOrAudioMissing when there is no such output or it fails, kUnreadable when the song
/// has nothing to play. The song cannot be used for anything else afterwards.
int PlaySong(CliContext& context, const PlayPlan& plan, devices::MidiDevices& devices,
             session::Session& session, MessageHost& host);

} // namespace tracksmith::cli
