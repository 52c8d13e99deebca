#pragma once

#include <CLI/CLI.hpp>

#include "app/cli/cli_context.h"

/// One function for each command: declares its arguments and sets `context.run` when the user chose
/// it. `context` must outlive `app`.
namespace tracksmith::cli {

/// `info`: describes songs as text or JSON.
void AddInfoCommand(CLI::App& app, CliContext& context);

/// `check`: finds what is wrong with songs and repairs it.
void AddCheckCommand(CLI::App& app, CliContext& context);

/// `convert`: saves songs in another format.
void AddConvertCommand(CLI::App& app, CliContext& context);

/// `revoice`: replaces voices by a table or by suggestions.
void AddRevoiceCommand(CLI::App& app, CliContext& context);

/// `set`: changes voice and controllers of a channel as the mixer's strips do.
void AddSetCommand(CLI::App& app, CliContext& context);

/// `range`: cuts, copies and transposes a range of measures.
void AddRangeCommand(CLI::App& app, CliContext& context);

/// `render`: plays a song on the built-in instrument into an audio file.
void AddRenderCommand(CLI::App& app, CliContext& context);

/// `play`: plays a song on a MIDI output in real time.
void AddPlayCommand(CLI::App& app, CliContext& context);

/// `ports`: lists the MIDI outputs and inputs as text or JSON.
void AddPortsCommand(CLI::App& app, CliContext& context);

/// `instruments`: lists the catalogue as text, JSON or Markdown.
void AddInstrumentsCommand(CLI::App& app, CliContext& context);

/// `voices`: lists, imports and exports the voices of an instrument.
void AddVoicesCommand(CLI::App& app, CliContext& context);

/// `diff`: shows what differs between two songs.
void AddDiffCommand(CLI::App& app, CliContext& context);

/// `backups`: lists the automatic backups and restores one into a file.
void AddBackupsCommand(CLI::App& app, CliContext& context);

} // namespace tracksmith::cli
