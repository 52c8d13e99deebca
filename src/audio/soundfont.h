#pragma once

#include <filesystem>

namespace tracksmith::audio {

/// The SoundFont that the built-in instrument is to play: `chosen` when it is not empty, else what
/// the environment variable TRACKSMITH_SOUNDFONT names, else the first of the usual General MIDI
/// sets that the system has installed. Raises EAudioError (NoInstrument) when a named file is
/// missing or nothing is installed.
std::filesystem::path FindSoundfont(const std::filesystem::path& chosen = {});

} // namespace tracksmith::audio
