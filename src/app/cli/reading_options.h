#pragma once

#include <cstdint>
#include <optional>

#include "app/cli/cli_context.h"
#include "app/cli/command_line.h"
#include "app/session/workspace.h"

namespace tracksmith::cli {

/// The options of reading that every command with songs has.
struct ReadingOptions {
    bool runningStatusAcrossSysex = false;
    bool honourZelIgnore = false;
    /// Fewest ticks of a note, 0 for none; as the user has set it where it is missing.
    std::optional<std::int32_t> minimumNoteLength;

    /// Declares the switches. The options must outlive `command`.
    void AddTo(Command& command, const CliContext& context);
    /// Declares the switch for short notes; without it they stay as they are.
    void AddNoteLengthTo(Command& command, const CliContext& context);
    /// Makes songs be read so.
    void SetUp(session::WorkOptions& options) const;

private:
    const CliContext* context_ = nullptr; // of a command that lengthens short notes
};

/// The switch that lets running status last across system-exclusive messages.
inline constexpr const char* kRunningStatusAcrossSysexSwitch = "--running-status-across-sysex";

} // namespace tracksmith::cli
