#pragma once

#include <span>
#include <string>

#include "app/song_description.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::cli {

/// One line of JSON (without line end) that describes a song: schema 1. Channels count from 1,
/// programs and banks are the numbers in the file (0-127).
/// `voices` are the names of the voices of `song.channels`, one for each.
std::string InfoJson(const std::string& file, const app::SongDescription& song,
                     std::span<const instruments::NamedVoice> voices);

/// The line for a file that could not be read.
std::string InfoFailureJson(const std::string& file, const std::string& error);

} // namespace tracksmith::cli
