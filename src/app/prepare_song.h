#pragma once

#include <span>
#include <string>

#include "base/message_host.h"

#include "app/session/session.h"
#include "instruments/instrument_settings.h"

namespace tracksmith::app {

/// Takes instrument and options of the first output from the settings. Songs are prepared only for
/// an instrument that the catalogue has: nothing is taken out of a song before the user has said
/// what it is for.
void TakeInstrument(session::WorkOptions& options, instruments::InstrumentSettings& settings);

/// Takes the instruments of the outputs that single channels play to from the settings.
/// `outputOfChannel` has the product name for each of the 16 channels, empty for the first output.
void TakeOtherOutputs(session::WorkOptions& options, instruments::InstrumentSettings& settings,
                      std::span<const std::string> outputOfChannel);

/// Prepares the song in memory again for the instrument of the first output, whatever the automatic
/// preparation is set to. It can be taken back. Raises EMidiError when the song cannot be changed
/// now or memory ends; the song is as before then.
void PrepareSong(session::Session& session, MessageHost& host);

/// Whether the song has not been prepared for the instrument of the first output, which the
/// catalogue has.
bool CanPrepare(const session::Workspace& workspace);

/// Whether notes begin before the instrument is ready, as the last preparation counted them.
bool HasEarlyNotes(const instruments::PreparationReport& report);

/// Whether InsertLeadIn can do something: the song was prepared last, notes begin before the
/// instrument is ready, and the preparing can be taken back.
bool CanInsertLeadIn(const session::Session& session);

/// Takes the preparing back, puts an empty measure in front (see song::InsertLeadInMeasure) and
/// prepares the song with it, which can be taken back as one. Asks first where changes made by hand
/// since the preparing would be lost. Returns whether there is such a measure now; only when
/// CanInsertLeadIn. Raises EMidiError.
bool InsertLeadIn(session::Session& session, MessageHost& host);

/// PrepareSong for a song that was loaded without, with InsertLeadIn where that helps. Returns
/// whether there is an empty measure in front now. Raises EMidiError.
bool PrepareSongWithLeadIn(session::Session& session, MessageHost& host);

} // namespace tracksmith::app
