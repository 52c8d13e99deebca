#pragma once

#include <vector>

#include "base/text.h"

#include "app/song_description.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::app {

/// What a channel plays first on `instrument`: its numbers, where the song selects no bank those of
/// the bank in which the instrument starts. Channel 10, a channel that the song makes a drum part,
/// one whose numbers only a drum kit has, and one in a bank of kits play a kit. 0/0/0 when the song
/// names no program.
instruments::ChannelVoice FirstVoiceOf(const instruments::VoiceTables& tables,
                                       const SongDescription::ChannelLine& line,
                                       instruments::InstrumentId instrument,
                                       const instruments::LookupOptions& options);

/// Name of a channel's first voice on `instrument`; empty when the song names no program.
instruments::NamedVoice VoiceOfChannel(const instruments::VoiceTables& tables,
                                       const SongDescription::ChannelLine& line,
                                       instruments::InstrumentId instrument,
                                       const instruments::LookupOptions& options,
                                       Language language);

/// VoiceOfChannel for each of `song.channels`, all on one instrument with its usual options.
std::vector<instruments::NamedVoice> VoicesOfChannels(const instruments::VoiceTables& tables,
                                                      const SongDescription& song,
                                                      instruments::InstrumentId instrument,
                                                      Language language);

} // namespace tracksmith::app
