#include "app/cli/play_wishes.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "song/practice_tempo.h"
#include "song/song_position.h"

namespace tracksmith::cli {
namespace {

// The whole of `text` as a number without a sign.
std::optional<std::int32_t> ParseNumber(std::string_view text) {
    std::int32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    const bool whole = error == std::errc() && behind == end && text.front() != '-';
    return whole ? std::optional(value) : std::nullopt;
}

SongPlace PlaceOfTick(const song::TimeMap& map, std::int32_t tick) {
    const song::MeasureBeatTick place = song::GetMeasureBeatFromSongPos(map, tick);
    return {static_cast<std::int32_t>(place.measure), static_cast<std::int32_t>(place.beat),
            static_cast<std::int32_t>(place.tick)};
}

} // namespace

std::optional<SongPlace> ParsePlace(std::string_view text) {
    std::array<std::int32_t, 3> numbers{1, 1, 0};
    std::size_t count = 0;
    for (bool more = true; more; ++count) {
        const std::size_t length = std::min(text.find_first_of(":."), text.size());
        const std::optional<std::int32_t> number = ParseNumber(text.substr(0, length));
        if (!number || count == numbers.size()) {
            return std::nullopt;
        }
        numbers[count] = *number;
        more = length < text.size();
        text.remove_prefix(more ? length + 1 : length);
    }
    const SongPlace place{numbers[0], numbers[1], numbers[2]};
    return place.measure >= 1 && place.beat >= 1 ? std::optional(place) : std::nullopt;
}

std::optional<std::int32_t> TickOfPlace(const song::TimeMap& map, const SongPlace& place) {
    if (place >= PlaceOfTick(map, map.songLength)) {
        return map.songLength;
    }
    const std::int32_t tick = song::MTCToSongPosition(map, place.measure, place.beat, place.tick);
    // A beat too many would be one of the next measure.
    return tick >= 0 && PlaceOfTick(map, tick) == place ? std::optional(tick) : std::nullopt;
}

std::optional<TempoWish> ParseTempo(std::string_view text) {
    TempoWish wish{TempoWish::Kind::Absolute};
    std::int32_t sign = 1;
    if (text.starts_with('+') || text.starts_with('-')) {
        wish.kind = TempoWish::Kind::Offset;
        sign = text.front() == '-' ? -1 : 1;
        text.remove_prefix(1);
    } else if (text.ends_with('%')) {
        wish.kind = TempoWish::Kind::PerCent;
        text.remove_suffix(1);
    }
    const std::optional<std::int32_t> number = ParseNumber(text);
    if (!number) {
        return std::nullopt;
    }
    wish.value = sign * *number;
    return wish;
}

std::optional<std::int32_t> TempoOffset(const song::TimeMap& map, const TempoWish& wish) {
    const std::int64_t file = song::FileBpmAt(map, 0);
    std::int64_t wanted = wish.value;
    if (wish.kind == TempoWish::Kind::Offset) {
        wanted += file;
    } else if (wish.kind == TempoWish::Kind::PerCent) {
        wanted = song::BpmOfPercent(map, 0, wish.value);
    }
    const std::int32_t offset = song::TempoOffsetForBpm(map, 0, wanted);
    return file + offset == wanted ? std::optional(offset) : std::nullopt;
}

} // namespace tracksmith::cli
