#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "app/session/workspace.h"
#include "app/song_description.h"
#include "instruments/picker/voice_picker.h"

namespace tracksmith::app {

/// The user's choices about the voices of an instrument.
using LookupOptionsOf = std::function<instruments::LookupOptions(instruments::InstrumentId)>;

/// The banks that the channels are in before any bank select, on the instruments that they go to.
instruments::StartBanks StartBanksOf(const session::Workspace& workspace,
                                     const instruments::VoiceTables& tables,
                                     const SongDescription& song, const LookupOptionsOf& options);

/// What a picker for `channel` (0-15) serves: its instrument, the places where the song selects its
/// voice, and what the other channels play. Its links hold until the song's structure changes.
instruments::PickerTask PickerTaskOf(const session::Workspace& workspace,
                                     const instruments::VoiceTables& tables,
                                     const SongDescription& song, const LookupOptionsOf& options,
                                     std::size_t channel);

/// The places of the task as text, for example "012.03.005".
std::vector<std::string> PlacesOf(const instruments::PickerTask& task, const song::TimeMap& song);

} // namespace tracksmith::app
