#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "editing/note_scan.h"
#include "editing/range_position.h"
#include "instruments/voices/voice.h"
#include "mixer/transposition.h"
#include "song/song.h"

namespace tracksmith::editing {

/// A channel (0-15) for an entry of the list of channels without the tenth, as choosing it takes
/// it: entry 9 is channel index 10.
constexpr std::size_t ChannelOfSelection(std::size_t entry) {
    return entry < 9 ? entry : entry + 1;
}
/// The same as carrying out takes it: entry 9 is channel index 9. Where both differ the user is
/// asked.
constexpr std::size_t ChannelOfEntry(std::size_t entry) {
    return entry <= 9 ? entry : entry + 1;
}

/// The label of an entry of that list: its text up to " - ", without a leading 0.
std::string ChannelLabel(std::string_view entry);

/// The channels that have notes, and of these the ones that moving all channels moves: no drums.
std::bitset<song::kMidiChannels> ChannelsWithNotes(const song::Song& song);
std::bitset<song::kMidiChannels> MelodyChannels(const song::Song& song);

/// The pitch (0-127) that `semitones` make of a stored pitch; beyond the range it is folded back by
/// octaves. With `megaVoice` notes above 95, which play effects, stay, and none comes below 28.
std::uint8_t TransposedPitch(std::uint8_t pitch, int semitones, bool megaVoice);

/// What a range is transposed by.
struct TransposeWish {
    TickRange range;
    int semitones = 0;
    std::bitset<song::kMidiChannels> channels;
    /// What the mixer moves the sounding pitches by.
    mixer::Transposition live;
    /// Whether a voice has notes that play effects; none has without it.
    std::function<bool(const instruments::VoiceNumbers&)> isMegaVoice;
};

/// Moves the notes that begin in the range, with their note-offs wherever these stand, their key
/// pressure, and the chords and chord names in the range. Returns how many notes were moved.
/// `listener` is told about note-offs without a note-on before anything is changed. Linear, but for
/// a search in the program changes of MegaVoice channels. Throws std::bad_alloc.
std::int64_t TransposeRange(song::Song& song, const TransposeWish& wish,
                            const NoteFaultListener& listener = {});

} // namespace tracksmith::editing
