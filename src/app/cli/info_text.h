#pragma once

#include <iosfwd>
#include <span>
#include <string>

#include "base/text.h"

#include "app/song_description.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::cli {

/// How many lines of tempo and time signature changes are shown unless all are wanted.
inline constexpr std::size_t kShownChanges = 8;

/// Writes a description for people: aligned columns, channels from 1, programs from 1. `all` shows
/// every change of tempo and time signature.
/// `voices` are the names of the voices of `song.channels`, one for each.
void WriteInfo(std::ostream& out, const std::string& file, const app::SongDescription& song,
               std::span<const instruments::NamedVoice> voices, Language language, bool all);

} // namespace tracksmith::cli
