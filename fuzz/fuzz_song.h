#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

#include "base/errors.h"
#include "base/recording_message_host.h"

#include "song/check_song.h"
#include "song/midi_file_reader.h"
#include "song/song.h"
#include "song/time_map.h"

namespace tracksmith::fuzz {

/// Ends the program with a message that the fuzzer keeps beside the input.
inline void Require(bool good, const std::string& fault) {
    if (!good) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
}

inline void RequireSound(const song::Song& song) {
    const std::string fault = song::CheckSong(song);
    Require(fault.empty(), fault);
}

/// Options that the first byte of the input chooses.
struct InputOptions {
    explicit InputOptions(std::uint8_t bits)
        : runningStatusAcrossSysex((bits & 4) != 0 ? 1 : 0),
          german((bits & 8) != 0),
          useRunningStatus((bits & 16) != 0),
          omitPortEvents((bits & 32) != 0),
          format0((bits & 64) != 0) {
        decode.splitFormat0 = (bits & 1) != 0;
        decode.honourZelIgnore = (bits & 2) != 0;
        decode.memoryBudget = std::uint64_t{64} << 20;
    }

    song::DecodeOptions decode;
    std::int32_t runningStatusAcrossSysex;
    bool german;
    bool useRunningStatus;
    bool omitPortEvents;
    bool format0;
};

/// Decodes `file` into `song`; false when it was refused, which must have been shown and must leave
/// a song that can be cleared.
inline bool Decode(song::Song& song, std::span<const std::uint8_t> file,
                   const InputOptions& options, song::DecodeResult& result) {
    RecordingMessageHost host(options.german ? Language::German : Language::English);
    song::ClearSong(song);
    song.runningStatusAcrossSysex = options.runningStatusAcrossSysex;
    try {
        result = song::DecodeMidiData(song, file, options.decode, host);
    } catch (const EMidiError& error) {
        Require(host.messages.size() == 1 && host.messages[0] == error.what(), "error not shown");
        song::ClearSong(song);
        return false;
    }
    Require(host.messages.empty(), "message without an error");
    RequireSound(song);
    return true;
}

} // namespace tracksmith::fuzz
