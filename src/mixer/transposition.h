#pragma once

#include <array>
#include <cstdint>

#include "song/midi_numbers.h"
#include "song/song.h"

namespace tracksmith::mixer {

/// By how many semitones at most the song and each channel are moved.
inline constexpr int kMostSemitones = 24;

/// By how many semitones a song sounds higher than its notes stand in the file.
struct Transposition {
    /// Of all channels.
    int song = 0;
    std::array<int, song::kMidiChannels> channels{};
    /// Channels that play drums, a bit for each; they are never moved.
    std::uint32_t drums = 0;

    /// The semitones of a channel (0-15).
    int Of(std::size_t channel) const {
        return (drums >> channel & 1U) != 0 ? 0 : song + channels.at(channel);
    }
    /// Something is moved.
    bool Any() const;

    friend bool operator==(const Transposition&, const Transposition&) = default;
};

/// The pitch (0-127) that sounds for `pitch` moved by `semitones`: beyond the range it is folded
/// back by octaves.
std::uint8_t SoundingPitch(std::uint8_t pitch, int semitones);

/// Gives every note and its key pressure the pitch that the transposition makes of its stored one,
/// `origData1`. Only data bytes are written, by song::WriteShared.
void WritePitches(const song::Song& song, const Transposition& transposition);

/// The pitches as they sound are the stored ones from now on.
void KeepPitches(const song::Song& song);

} // namespace tracksmith::mixer
