#include "editing/range_position.h"

#include <charconv>

#include "editing/texts.h"
#include "song/song_position.h"

namespace tracksmith::editing {
namespace {

using Field = RangeReading::Field;

struct Place {
    std::int32_t measure = 0;
    std::int32_t beat = 0;
};

std::optional<Place> PlaceOf(const PositionText& text) {
    const auto measure = FieldNumber(text.measure);
    const auto beat = FieldNumber(text.beat);
    return measure && beat ? std::optional(Place{*measure, *beat}) : std::nullopt;
}

// The song's length for a place at its end or behind; -1 for one that no song has.
std::int32_t TickOf(const song::TimeMap& map, Place place) {
    if (place.measure < 1 || place.beat < 1) {
        return -1;
    }
    const std::int32_t tick = song::MTCToSongPosition(map, place.measure, place.beat, 0);
    if (tick >= 0) {
        return tick;
    }
    const auto end = song::GetMeasureBeatFromSongPos(map, map.songLength);
    const bool behind =
        place.measure > end.measure || (place.measure == end.measure && place.beat >= end.beat);
    return behind ? map.songLength : -1;
}

/// The checks of one set of positions, in their order; the first fault stays.
class Reader {
public:
    Reader(const song::TimeMap& map, const RangeWish& wish, Language language)
        : map_(map), wish_(wish), language_(language) {}

    RangeReading Run() {
        const bool copies = wish_.tool == RangeTool::Copy;
        const auto from = PlaceOf(wish_.from);
        const auto to = PlaceOf(wish_.to);
        const auto destination = copies ? PlaceOf(wish_.destination) : Place{1, 1};
        const bool first = from && from->measure == 1 && from->beat == 1;
        Check(!first || wish_.tool == RangeTool::Transpose, Field::From, texts::kFromTooLow);
        Check(from.has_value(), Field::From, copies ? texts::kNoCopyFrom : texts::kNoFrom);
        Check(to.has_value(), Field::To, copies ? texts::kNoCopyEnd : texts::kNoEnd);
        Check(destination.has_value(), Field::Destination, texts::kNoCopyTo);
        if (!from || !to || !destination) {
            return reading_;
        }
        TickRange& range = reading_.range;
        range = {TickOf(map_, *from), TickOf(map_, *to), copies ? TickOf(map_, *destination) : 0};
        Check(range.start >= 0, Field::From, texts::kBadFrom);
        Check(range.end >= 0, Field::To, texts::kBadTo);
        Check(range.destination >= 0, Field::Destination, texts::kBadTo);
        CheckEnd(range.start, Field::From, texts::kStartBehindEnd);
        CheckEnd(range.end, Field::To, texts::kEndBehindEnd);
        CheckEnd(range.destination, Field::Destination, texts::kToBehindEnd);
        Check(range.start < range.end, Field::To, texts::kStartNotBeforeEnd);
        return reading_;
    }

private:
    void Check(bool good, Field field, const Text& fault) {
        if (!good && reading_.fault.empty()) {
            reading_.fault = fault.In(language_);
            reading_.field = field;
        }
    }
    void CheckEnd(std::int32_t tick, Field field, const Text& fault) {
        const bool open = reading_.fault.empty();
        Check(tick < map_.songLength, field, fault);
        if (open && !reading_.fault.empty()) {
            reading_.fault += song::SongPositionToMTC(map_, map_.songLength);
            reading_.fault += texts::kClosingMark.In(language_);
        }
    }

    const song::TimeMap& map_;
    const RangeWish& wish_;
    Language language_;
    RangeReading reading_;
};

} // namespace

PositionText SplitPosition(std::string_view text) {
    const std::size_t mark = text.find_first_of(":.");
    if (mark == std::string_view::npos) {
        return {std::string(text), "1"};
    }
    return {std::string(text.substr(0, mark)), std::string(text.substr(mark + 1))};
}

std::optional<std::int32_t> FieldNumber(std::string_view field) {
    const std::size_t first = field.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    field = field.substr(first, field.find_last_not_of(' ') - first + 1);
    std::int32_t number = 0;
    const char* const end = field.data() + field.size();
    const auto [behind, error] = std::from_chars(field.data(), end, number);
    const bool whole = error == std::errc() && behind == end && field.front() != '-';
    return whole ? std::optional(number) : std::nullopt;
}

RangeReading ReadRange(const song::TimeMap& map, const RangeWish& wish, Language language) {
    return Reader(map, wish, language).Run();
}

const TickRange& RangeOrError(const RangeReading& reading, MessageHost& host) {
    if (!reading.fault.empty()) {
        RaiseMidiError(host, reading.fault);
    }
    return reading.range;
}

} // namespace tracksmith::editing
