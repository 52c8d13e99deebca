#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/message_host.h"

#include "song/song.h"

namespace tracksmith::song {

/// Options of the writer.
struct EncodeOptions {
    /// Leave out a status byte that equals the one before.
    bool useRunningStatus = false;
    /// Leave out the port meta events (0x21).
    bool omitPortEvents = false;
    /// Changes the bytes of a lyric event (meta 0x05) on their way into the file, for instruments
    /// with lyric conventions of their own. Empty: bytes stay.
    std::function<std::vector<std::uint8_t>(std::span<const std::uint8_t>)> adjustLyric;
};

/// The song as a Standard MIDI File of format 0: all tracks merged by tick (equal ticks in track
/// order), one port event at most, one End of Track. An event that cannot be written is shown
/// through `host` and raised as EMidiError. Does not change the song.
std::vector<std::uint8_t> EncodeFormat0(const Song& song, const EncodeOptions& options,
                                        MessageHost& host);

/// The song as a Standard MIDI File of format 1: one chunk per track in track order. Raises like
/// EncodeFormat0. More than 65,535 tracks are a coding error.
std::vector<std::uint8_t> EncodeFormat1(const Song& song, const EncodeOptions& options,
                                        MessageHost& host);

} // namespace tracksmith::song
