#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "base/message_host.h"

#include "song/byte_writer.h"
#include "song/song.h"

namespace tracksmith::song {

/// Options of the writer.
struct EncodeOptions {
    /// Leave out a status byte that equals the one before.
    bool useRunningStatus = false;
    /// Leave out the port meta events (0x21).
    bool omitPortEvents = false;
    /// Changes the bytes of a lyric event (meta 0x05) on their way into the file, for instruments
    /// with lyric conventions of their own. Empty: bytes stay. Called
    /// from several threads at once.
    std::function<std::vector<std::uint8_t>(std::span<const std::uint8_t>)> adjustLyric;
};

/// Turns songs into Standard MIDI Files (RP-001) in memory that it keeps for the next time: about
/// twice the size of the largest file so far. Does not change the songs. One thread at a time;
/// large songs are coded on several threads of its own.
class SongEncoder {
public:
    /// Format 0: all tracks merged by tick (equal ticks in track order), one port event at most,
    /// one End of Track. The bytes stay until the next call. An event that cannot be written is
    /// shown through `host` and raised as EMidiError.
    std::span<const std::uint8_t> Format0(const Song& song, const EncodeOptions& options,
                                          MessageHost& host);

    /// Format 1: one chunk per track in track order. More than 65,535 tracks are a coding error.
    std::span<const std::uint8_t> Format1(const Song& song, const EncodeOptions& options,
                                          MessageHost& host);

private:
    void JoinChunks(const Song& song);

    std::vector<ByteWriter> chunks_;
    ByteWriter file_;
};

/// SongEncoder::Format0 for a single use.
std::vector<std::uint8_t> EncodeFormat0(const Song& song, const EncodeOptions& options,
                                        MessageHost& host);

/// SongEncoder::Format1 for a single use.
std::vector<std::uint8_t> EncodeFormat1(const Song& song, const EncodeOptions& options,
                                        MessageHost& host);

} // namespace tracksmith::song
