#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/message_host.h"
#include "base/text.h"

#include "song/time_map_record.h"

namespace tracksmith::editing {

/// A position as typed: a measure and a beat, each counted from 1.
struct PositionText {
    std::string measure;
    std::string beat;
};

/// Takes "8:01", "8.1" or "8" (its first beat) apart; whatever else becomes fields that no song
/// position can be read from.
PositionText SplitPosition(std::string_view text);

/// The number in a field: digits only, blanks around them allowed.
std::optional<std::int32_t> FieldNumber(std::string_view field);

/// The three tools, whose messages differ.
enum class RangeTool : std::uint8_t { Delete, Copy, Transpose };

/// What the user has typed into a dialog. `destination` counts for copies only.
struct RangeWish {
    RangeTool tool = RangeTool::Delete;
    PositionText from;
    PositionText to;
    PositionText destination;
};

/// A range of a song in ticks, from `start` up to before `end`.
struct TickRange {
    std::int32_t start = 0;
    std::int32_t end = 0;
    /// Where a copy goes; 0 for the other tools.
    std::int32_t destination = 0;

    std::int32_t Length() const { return end - start; }
};

/// What reading the positions came to: a range, or why there is none and in which field.
struct RangeReading {
    enum class Field : std::uint8_t { None, From, To, Destination, Semitones, Channel };

    TickRange range;
    /// Empty when the range is good.
    std::string fault;
    Field field = Field::None;
};

/// Reads and checks the positions of a tool, in the order of its messages: empty or unreadable
/// fields, positions that the song does not have, behind its end, the end not behind the start. The
/// song must have a time map.
RangeReading ReadRange(const song::TimeMap& map, const RangeWish& wish, Language language);

/// The range of a reading, for carrying out; a fault is shown and raised as EMidiError.
const TickRange& RangeOrError(const RangeReading& reading, MessageHost& host);

} // namespace tracksmith::editing
