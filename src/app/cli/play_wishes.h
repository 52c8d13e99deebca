#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "song/time_map_record.h"

/// What the user asks of playing, as typed on the command line.
namespace tracksmith::cli {

/// A place in a song: measure and beat from 1, tick from 0.
struct SongPlace {
    std::int32_t measure = 1;
    std::int32_t beat = 1;
    std::int32_t tick = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the comparison's own zero
    auto operator<=>(const SongPlace&) const = default;
};

/// Reads "8", "8:01" or "8:01:240", also with points, as the program shows places; nothing when it
/// is none.
std::optional<SongPlace> ParsePlace(std::string_view text);

/// The tick of a place; the song's length for a place at its end or behind, nothing when the
/// measure has no such beat or tick.
std::optional<std::int32_t> TickOfPlace(const song::TimeMap& map, const SongPlace& place);

/// A tempo relative to the song's first one.
struct TempoWish {
    enum class Kind { Offset, PerCent, Absolute };
    Kind kind = Kind::Offset;
    std::int32_t value = 0;
    bool operator==(const TempoWish&) const = default;
};

/// Reads "+5" or "-5" (quarter notes per minute more or less), "90%" or "120"; nothing when it is
/// none of these.
std::optional<TempoWish> ParseTempo(std::string_view text);

/// By how many quarter notes per minute the tempos of a song change; nothing when its first tempo
/// would become slower or faster than the player plays.
std::optional<std::int32_t> TempoOffset(const song::TimeMap& map, const TempoWish& wish);

} // namespace tracksmith::cli
