#include "instruments/sysex/sysex_index.h"

#include <algorithm>
#include <utility>

namespace tracksmith::instruments {
namespace {

using song::SysexPlace;

bool Before(const SysexPlace& a, const SysexPlace& b) {
    return a.track != b.track ? a.track < b.track : a.event->tick < b.event->tick;
}

struct Position {
    std::int32_t track;
    std::int32_t tick;
};

bool PlaceBefore(const SysexPlace& place, const Position& position) {
    return place.track != position.track ? place.track < position.track
                                         : place.event->tick < position.tick;
}

bool PositionBefore(const Position& position, const SysexPlace& place) {
    return place.track != position.track ? position.track < place.track
                                         : position.tick < place.event->tick;
}

} // namespace

SysexIndex::SysexIndex(std::vector<SysexPlace> places, bool drumBanks)
    : places_(std::move(places)), drumBanks_(drumBanks) {
    if (!std::is_sorted(places_.begin(), places_.end(), Before)) {
        std::stable_sort(places_.begin(), places_.end(), Before);
    }
}

SysexIndex SysexIndex::Of(song::Song& song) {
    std::vector<SysexPlace> places;
    bool drumBanks = false;
    for (std::size_t i = 0; i < song.tracks.size(); ++i) {
        for (song::EventLink event = song.tracks[i].first; event; event = event->next) {
            drumBanks |= song::IsDrumBank(event->status, event->data1, event->data2);
            if (event->status == song::kSystemExclusive) {
                places.push_back({event, static_cast<std::int32_t>(i)});
            }
        }
    }
    return {std::move(places), drumBanks};
}

std::span<const SysexPlace> SysexIndex::At(std::int32_t track, std::int32_t tick) const {
    const Position position{track, tick};
    const auto begin = std::lower_bound(places_.begin(), places_.end(), position, PlaceBefore);
    return {begin, std::upper_bound(begin, places_.end(), position, PositionBefore)};
}

void SysexIndex::Reserve() {
    if (places_.size() == places_.capacity()) {
        places_.reserve(places_.size() * 2 + 32);
    }
}

void SysexIndex::Insert(SysexPlace place) {
    const std::int32_t tick = place.event->tick;
    song::EventLink before = place.event->prev;
    while (before && before->tick == tick && before->status != song::kSystemExclusive) {
        before = before->prev;
    }
    const auto same = At(place.track, tick);
    const auto found = std::ranges::find(same, before, &SysexPlace::event);
    const auto behind = found == same.end() ? same.begin() : found + 1;
    places_.insert(places_.begin() + (behind - same.begin()) + (same.data() - places_.data()),
                   place);
}

void SysexIndex::Reorder(std::span<const song::EventLink> toTrack, std::int32_t track) {
    std::vector<std::uint32_t> moved;
    moved.reserve(toTrack.size());
    for (const song::EventLink event : toTrack) {
        moved.push_back(event.Unit());
    }
    std::ranges::sort(moved);
    for (SysexPlace& place : places_) {
        if (std::ranges::binary_search(moved, place.event.Unit())) {
            place.track = track;
        }
    }
    std::stable_sort(places_.begin(), places_.end(), Before);
}

} // namespace tracksmith::instruments
