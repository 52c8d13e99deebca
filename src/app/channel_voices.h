#pragma once

#include <string>
#include <vector>

#include "base/text.h"

#include "app/song_description.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::app {

/// Name of a channel's first voice on `instrument`; empty when the song names no program. Channel
/// 10, and a channel whose numbers only a drum kit has, is named by the kits.
std::string VoiceOfChannel(const instruments::VoiceTables& tables,
                           const SongDescription::ChannelLine& line,
                           instruments::InstrumentId instrument,
                           const instruments::LookupOptions& options, Language language);

/// VoiceOfChannel for each of `song.channels`, all on one instrument with its usual options.
std::vector<std::string> VoicesOfChannels(const instruments::VoiceTables& tables,
                                          const SongDescription& song,
                                          instruments::InstrumentId instrument, Language language);

} // namespace tracksmith::app
