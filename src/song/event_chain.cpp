#include "song/event_chain.h"

#include <array>

namespace tracksmith::song {
namespace {

std::int32_t ShortLength(std::uint8_t status) {
    if (status >= 0xF0) {
        return 0;
    }
    return (status & 0xE0) == 0xC0 ? 2 : 3;
}

EventLink NewEvent(EventPool& pool, const MidiEvent& values) {
    const EventLink event = pool.NewEvent();
    *event = values;
    return event;
}

EventLink NewLongEvent(EventPool& pool, std::int32_t tick, std::uint8_t status,
                       std::uint8_t metaType, std::span<const std::uint8_t> bytes) {
    MidiEvent values{};
    values.status = status;
    values.length = static_cast<std::int32_t>(bytes.size());
    values.kind = kLongMessage;
    values.data = pool.NewData(bytes);
    values.metaType = metaType;
    values.tick = tick;
    return NewEvent(pool, values);
}

} // namespace

EventLink NewShortEvent(EventPool& pool, std::int32_t tick, std::uint8_t status, std::uint8_t data1,
                        std::uint8_t data2) {
    MidiEvent values{};
    values.status = status;
    values.length = ShortLength(status);
    values.kind = kShortMessage;
    values.metaType = kNoMeta;
    values.tick = tick;
    values.data1 = values.origData1 = data1;
    values.data2 = values.origData2 = data2;
    return NewEvent(pool, values);
}

EventLink NewMetaEvent(EventPool& pool, std::int32_t tick, std::uint8_t type,
                       std::span<const std::uint8_t> bytes) {
    return NewLongEvent(pool, tick, kMeta, type, bytes);
}

EventLink NewSysexEvent(EventPool& pool, std::int32_t tick, std::span<const std::uint8_t> bytes) {
    return NewLongEvent(pool, tick, kSystemExclusive, kNoMeta, bytes);
}

void InitTrack(Song& song, Track& track) {
    constexpr std::array<std::uint8_t, 1> kFirstPort{0};
    track = Track{};
    track.first = NewMetaEvent(song.pool, 0, kMetaPort, kFirstPort);
    track.last = track.first;
    track.eventCount = 1;
}

void AppendEvent(Track& track, EventLink event) {
    event->next = EventLink();
    event->pairLink = EventLink();
    event->noteOnLink = EventLink();
    event->prev = track.last;
    track.last->next = event;
    track.last = event;
    ++track.eventCount;
}

void InsertAfter(Track& track, EventLink place, EventLink event) {
    const EventLink behind = place->next;
    if (!behind) {
        AppendEvent(track, event);
        return;
    }
    event->prev = place;
    event->next = behind;
    place->next = event;
    behind->prev = event;
    ++track.eventCount;
}

void InsertByTick(Track& track, EventLink event) {
    EventLink place = track.last;
    if (place->IsMeta(kMetaEndOfTrack) && place != track.first) {
        place = place->prev;
    }
    while (place != track.first && place->tick > event->tick) {
        place = place->prev;
    }
    InsertAfter(track, place, event);
}

void UnlinkEvent(Track& track, EventLink event) {
    (event->prev ? event->prev->next : track.first) = event->next;
    (event->next ? event->next->prev : track.last) = event->prev;
    event->next = EventLink();
    event->prev = EventLink();
    --track.eventCount;
}

void RemoveEvent(Song& song, Track& track, EventLink event) {
    UnlinkEvent(track, event);
    song.pool.FreeEvent(event);
}

} // namespace tracksmith::song
