#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/session/workspace.h"
#include "instruments/sysex/sysex_family.h"

namespace tracksmith::app {

/// What the window and the command line say about a song. Texts are UTF-8, safe to show.
struct SongDescription {
    /// One track of the song.
    struct TrackLine {
        std::string name;
        /// Channel 0-15, 0xFF while none is known.
        std::uint8_t channel = 0xFF;
        std::int64_t events = 0;
        std::int64_t notes = 0;
        bool ignored = false;
    };
    /// One channel that has events.
    struct ChannelLine {
        /// 0-15.
        std::uint8_t channel = 0;
        std::int64_t notes = 0;
        /// First bank select and program change of the channel.
        std::optional<std::uint8_t> bankMsb;
        std::optional<std::uint8_t> bankLsb;
        std::optional<std::uint8_t> program;
        /// The song as prepared makes the channel a drum part by a message of its own.
        bool drumPart = false;
    };
    /// A tempo change or a change of time signature with its place.
    struct TempoLine {
        std::string position;
        std::int64_t timeMs = 0;
        std::int32_t tick = 0;
        std::uint16_t bpm = 0;
        std::int32_t tempo = 0;
    };
    struct TimeSignatureLine {
        std::string position;
        std::int64_t timeMs = 0;
        std::int32_t tick = 0;
        std::uint8_t numerator = 4;
        std::uint8_t denominator = 4;
    };

    /// First track name of the song, else the file's name.
    std::string title;
    std::uint8_t format = 0;
    std::uint8_t fileFormat = 0;
    std::uint16_t division = 0;
    std::int64_t events = 0;
    std::int64_t notes = 0;
    std::int64_t sysex = 0;
    std::int64_t lyrics = 0;
    std::int64_t keySignatures = 0;
    std::int32_t songLength = 0;
    std::int32_t lengthMs = 0;
    /// Song length as position text, for example "012.03.005".
    std::string lengthPosition;
    /// Song length as digits (Song::lengthText).
    std::string lengthText;
    std::vector<TrackLine> tracks;
    std::vector<ChannelLine> channels;
    std::vector<TempoLine> tempos;
    std::vector<TimeSignatureLine> timeSignatures;
    song::LoadReport changes;
    /// Families of instruments that the song's system-exclusive messages speak to, each once.
    std::vector<instruments::SysexFamily> families;
};

/// Describes the song in one walk over its events.
SongDescription DescribeSong(const session::Workspace& workspace);

} // namespace tracksmith::app
