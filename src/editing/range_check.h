#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "base/text.h"

#include "editing/range_position.h"
#include "editing/transpose_range.h"
#include "instruments/voices/voice.h"
#include "mixer/transposition.h"
#include "song/song.h"

namespace tracksmith::editing {

/// Whether a range can be cut: good positions that leave the lead-in alone. The song must have a
/// time map.
RangeReading CheckDelete(const song::Song& song, const RangeWish& wish, Language language);

/// Whether a range can be copied: good positions, and a song that does not become too long.
RangeReading CheckCopy(const song::Song& song, const RangeWish& wish, Language language);

/// What is transposed: the semitones as typed, and which channels.
struct Transposing {
    std::string semitones;
    /// Channel 0-15; all melody channels without one.
    std::optional<std::size_t> channel;
    /// What the channel is called in messages, its number without one.
    std::string label;
    mixer::Transposition live;
    std::function<bool(const instruments::VoiceNumbers&)> isMegaVoice;
};

/// Semitones as typed, with or without a sign.
std::optional<int> SemitonesOf(std::string_view text);

/// What checking a transposition came to; `wish` counts when the reading is good.
struct TransposeCheck {
    RangeReading reading;
    TransposeWish wish;
};

/// Whether a range can be transposed: semitones, a channel with notes, good positions.
TransposeCheck CheckTranspose(const song::Song& song, const RangeWish& wish,
                              const Transposing& transposing, Language language);

} // namespace tracksmith::editing
