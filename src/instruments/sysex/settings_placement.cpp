#include "instruments/sysex/settings_placement.h"

#include <algorithm>
#include <unordered_map>

#include "instruments/sysex/sysex_edit.h"
#include "song/event_chain.h"

namespace tracksmith::instruments {

using song::EventLink;

bool SettingsPlacement::IsBehind(PlayPlace place) const {
    if (place.track >= behind_.track) {
        return place.tick >= behind_.tick;
    }
    return clock_.MsOf(place.tick) > clock_.MsOf(behind_.tick);
}

// In a higher track even an event of the same millisecond might be played later.
std::int32_t SettingsPlacement::Latest(std::int32_t track, PlayPlace before) const {
    return track <= before.track ? before.tick : clock_.LastTickBefore(before.tick);
}

// From the last to the first, each as late as the next allows; empty where there is no room.
std::vector<std::int32_t> SettingsPlacement::TicksOf(const PlacedSettings& placed) const {
    const auto& settings = placed.settings;
    std::vector<std::int32_t> ticks(settings.size());
    std::optional<PlayPlace> next = placed.limit;
    std::int32_t tick = placed.wantedTick;
    for (std::size_t i = settings.size(); i-- > 0;) {
        const std::int32_t track = settings[i].track;
        if (next) {
            tick = std::min(tick, Latest(track, *next));
        }
        if (!IsBehind({tick, track})) {
            return {};
        }
        ticks[i] = tick;
        next = {tick, track};
    }
    return ticks;
}

EventLink SettingsPlacement::Copy(EventLink event, std::int32_t tick) {
    EventLink copy;
    WithMemory(session_, [&] { copy = song_.pool.NewEvent(); });
    *copy = *event;
    copy->next = copy->prev = copy->pairLink = copy->noteOnLink = EventLink();
    copy->tick = tick;
    return copy;
}

void SettingsPlacement::Take(const SettingEvent& setting) {
    walk_.Leave(setting.event, setting.track);
    song::UnlinkEvent(song_.tracks[static_cast<std::size_t>(setting.track)], setting.event);
}

void SettingsPlacement::PutAt(EventLink event, std::int32_t track, EventLink place,
                              std::int32_t tick) {
    event->tick = tick;
    event->timeMs = clock_.MsOf(tick);
    song::InsertAfter(song_.tracks[static_cast<std::size_t>(track)], place, event);
}

std::optional<std::int32_t> SettingsPlacement::Place(const PlacedSettings& placed) {
    std::vector<std::int32_t> ticks;
    std::vector<EventLink> events;
    WithMemory(session_, [&] {
        ticks = TicksOf(placed);
        events.resize(ticks.size());
    });
    if (ticks.empty()) {
        return placed.settings.empty() ? std::optional(0) : std::nullopt;
    }
    std::int32_t moved = 0;
    for (std::size_t i = 0; i < placed.repeated; ++i) {
        events[i] = Copy(placed.settings[i].event, ticks[i]);
    }
    for (std::size_t i = placed.repeated; i < events.size(); ++i) {
        events[i] = placed.settings[i].event;
        const bool before = placed.settings[i].order <= placed.order;
        moved += before || events[i]->tick != ticks[i] ? 1 : 0;
        Take(placed.settings[i]);
    }
    std::unordered_map<std::int32_t, EventLink> last; // put into each track
    for (std::size_t i = 0; i < events.size(); ++i) {
        const std::int32_t track = placed.settings[i].track;
        EventLink& place = last[track];
        EventLink behind = place ? place->next : walk_.Behind(track);
        behind = behind ? behind : song_.tracks[static_cast<std::size_t>(track)].last;
        while (behind->next && behind->tick < ticks[i]) {
            behind = behind->next;
        }
        PutAt(events[i], track, behind->prev, ticks[i]);
        place = events[i];
    }
    return moved;
}

void SettingsPlacement::RepeatBehindMessage(const std::vector<SettingEvent>& settings,
                                            std::size_t count) {
    EventLink place = message_;
    for (std::size_t i = 0; i < count; ++i) {
        const EventLink copy = Copy(settings[i].event, behind_.tick);
        PutAt(copy, behind_.track, place, behind_.tick);
        place = copy;
    }
}

void SettingsPlacement::MoveBehindMessage(const std::vector<SettingEvent>& settings) {
    EventLink place = message_;
    for (const SettingEvent& setting : settings) {
        Take(setting);
        PutAt(setting.event, behind_.track, place, behind_.tick);
        place = setting.event;
    }
}

} // namespace tracksmith::instruments
