#pragma once

#include <string>

#include "app/song_description.h"

namespace tracksmith::cli {

/// One line of JSON (without line end) that describes a song: schema 1. Channels count from 1,
/// programs and banks are the numbers in the file (0-127).
std::string InfoJson(const std::string& file, const app::SongDescription& song);

/// The line for a file that could not be read.
std::string InfoFailureJson(const std::string& file, const std::string& error);

} // namespace tracksmith::cli
