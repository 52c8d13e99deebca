#pragma once

#include <CLI/CLI.hpp>

#include "app/cli/cli_context.h"
#include "app/session/workspace.h"

namespace tracksmith::cli {

/// The options of reading that every command with songs has.
struct ReadingOptions {
    bool runningStatusAcrossSysex = false;
    bool honourZelIgnore = false;

    /// Declares the switches. The options must outlive `command`.
    void AddTo(CLI::App& command, const CliContext& context);
    /// Makes songs be read so.
    void SetUp(session::WorkOptions& options) const;
};

/// The switch that lets running status last across system-exclusive messages.
inline constexpr const char* kRunningStatusAcrossSysexSwitch = "--running-status-across-sysex";

} // namespace tracksmith::cli
