#pragma once

#include "app/settings/settings_store.h"
#include "song/note_length.h"

namespace tracksmith::app {

/// How short notes are made longer when songs are loaded, as the user has chosen: to 20 ticks, on
/// all channels, at first. A stored length out of range counts as the nearest that is in it.
song::NoteLengthOptions ReadNoteLength(settings::SettingsStore& store);

/// Returns false when it could not be stored.
bool WriteNoteLength(settings::SettingsStore& store, const song::NoteLengthOptions& options);

} // namespace tracksmith::app
