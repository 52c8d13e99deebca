#pragma once

#include "app/cli/cli_context.h"
#include "app/cli/command_line.h"

/// One function for each command: declares its arguments and sets `context.run` when the user chose
/// it. `context` must outlive `app`.
namespace tracksmith::cli {

/// `info`: describes songs as text or JSON.
void AddInfoCommand(Command& app, CliContext& context);

/// `check`: finds what is wrong with songs and repairs it.
void AddCheckCommand(Command& app, CliContext& context);

/// `convert`: saves songs in another format.
void AddConvertCommand(Command& app, CliContext& context);

/// `revoice`: replaces voices by a table or by suggestions.
void AddRevoiceCommand(Command& app, CliContext& context);

/// `set`: changes voice and controllers of a channel as the mixer's strips do.
void AddSetCommand(Command& app, CliContext& context);

/// `range`: cuts, copies and transposes a range of measures.
void AddRangeCommand(Command& app, CliContext& context);

/// `render`: plays a song on the built-in instrument into an audio file.
void AddRenderCommand(Command& app, CliContext& context);

/// `play`: plays a song on a MIDI output in real time.
void AddPlayCommand(Command& app, CliContext& context);

/// `ports`: lists the MIDI outputs and inputs as text or JSON.
void AddPortsCommand(Command& app, CliContext& context);

/// `instruments`: lists the catalogue as text, JSON or Markdown.
void AddInstrumentsCommand(Command& app, CliContext& context);

/// `voices`: lists, imports and exports the voices of an instrument.
void AddVoicesCommand(Command& app, CliContext& context);

/// `diff`: shows what differs between two songs.
void AddDiffCommand(Command& app, CliContext& context);

/// `backups`: lists the automatic backups and restores one into a file.
void AddBackupsCommand(Command& app, CliContext& context);

} // namespace tracksmith::cli
