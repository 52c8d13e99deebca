#pragma once

#include <span>
#include <string>

#include "base/text.h"

#include "app/cli/song_input.h"
#include "app/health/check_health.h"
#include "app/song_description.h"
#include "instruments/preparation.h"
#include "instruments/voices/voice_lookup.h"

namespace tracksmith::cli {

/// One line of JSON (without line end) that describes a song: schema 1. Channels count from 1,
/// programs and banks are the numbers in the file (0-127). `file` is the name as given: where it is
/// no UTF-8, the field "file" is a text for people and "fileBytes" has the name's bytes as
/// hexadecimal digits. `voices` are the names of the voices of `song.channels`, one for each.
std::string InfoJson(const std::string& file, const app::SongDescription& song,
                     std::span<const instruments::NamedVoice> voices);

/// The line for a song that was converted into `target`: what preparing it put in, took out and
/// kept, see app::KeptKind.
std::string ConversionJson(const std::string& file, const std::string& target,
                           const instruments::PreparationReport& preparation);

/// The line for a song that was checked: each finding with rule, severity, channel (null for all),
/// count, tick and position of the first place, all ticks, text, whether it can be repaired.
std::string CheckJson(const std::string& file, const song::Song& song,
                      const health::HealthReport& report, const std::string& instrument,
                      Language language);

/// The line for a file that could not be read, with the kind of fault and its place where they are
/// known.
std::string InfoFailureJson(const InputFailure& failure, Language language);

} // namespace tracksmith::cli
