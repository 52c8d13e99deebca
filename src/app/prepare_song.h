#pragma once

#include <span>
#include <string>

#include "base/message_host.h"

#include "app/workspace.h"
#include "instruments/instrument_settings.h"

namespace tracksmith::app {

/// Takes instrument and options of the first output from the settings into the workspace. Songs
/// are prepared only for an instrument that the catalogue has: nothing is taken out of a song
/// before the user has said what it is for.
void TakeInstrument(Workspace& workspace, instruments::InstrumentSettings& settings);

/// Takes the instruments of the outputs that single channels play to from the settings.
/// `outputOfChannel` has the product name for each of the 16 channels, empty for the first output.
void TakeOtherOutputs(Workspace& workspace, instruments::InstrumentSettings& settings,
                      std::span<const std::string> outputOfChannel);

/// Prepares the song in memory again for the workspace's instrument, whatever the automatic
/// preparation is set to, and marks it as modified when that changes it. The song must be stopped;
/// every reference into it is to be found again afterwards. Raises EMidiError when memory ends.
void PrepareSong(Workspace& workspace, MessageHost& host);

} // namespace tracksmith::app
