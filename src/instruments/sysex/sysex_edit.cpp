#include "instruments/sysex/sysex_edit.h"

#include <algorithm>

#include "instruments/sysex/insertion_clock.h"
#include "song/event_chain.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;
using song::Song;
using song::SysexPlace;

constexpr std::int32_t kSearchedQuarters = 8;

void AddChange(SysexSession& session, SysexNote::What what, const SysexPlace& place) {
    WithMemory(session, [&] { session.changes.push_back({what, place}); });
}

song::Track& TrackOf(Song& song, std::int32_t track) {
    return song.tracks[static_cast<std::size_t>(track)];
}

// A removed message of these bytes at this place; null without one.
EventLink RemovedMessage(Song& song, SysexSession& session, const Insertion& where,
                         SysexBytes data) {
    const auto places = IndexOf(song, session).At(where.track, where.tick);
    const auto found = std::ranges::find_if(places, [data](const SysexPlace& place) {
        return place.event->length == 0 && std::ranges::equal(place.event->data.Bytes(), data);
    });
    return found == places.end() ? EventLink() : found->event;
}

// What was removed in this session and comes back has not changed.
void Revive(SysexSession& session, const SysexPlace& place) {
    place.event->length = static_cast<std::int32_t>(place.event->data.Size());
    const auto removal = std::ranges::find_if(session.changes, [&](const SysexChange& change) {
        return change.what == SysexNote::What::Removed && change.place.event == place.event;
    });
    if (removal == session.changes.end()) {
        AddChange(session, SysexNote::What::Inserted, place);
    } else {
        session.changes.erase(removal);
    }
}

// Behind the event `before`.
EventLink InsertBehind(Song& song, SysexSession& session, const Insertion& where, EventLink before,
                       SysexBytes data) {
    EventLink event;
    IndexOf(song, session);
    WithMemory(session, [&] {
        session.index->Reserve();
        event = song::NewSysexEvent(song.pool, where.tick, data);
        event->timeMs = MsOfTick(song, where.tick);
    });
    song::InsertAfter(TrackOf(song, where.track), before, event);
    session.index->Insert({event, where.track});
    return event;
}

EventLink InsertNew(Song& song, SysexSession& session, const Insertion& where, SysexBytes data) {
    const EventLink before = PlaceFor(where.start, where.tick);
    return before ? InsertBehind(song, session, where, before, data) : EventLink();
}

SysexNote NoteOf(const SysexChange& change) {
    const auto bytes = change.place.event->data.Bytes();
    SysexNote note;
    note.what = change.what;
    note.size = bytes.size() + 1;
    note.bytes.reserve(std::min(note.size, kMostNotedBytes));
    note.bytes.push_back(song::kSystemExclusive);
    const auto kept = bytes.first(std::min(bytes.size(), kMostNotedBytes - 1));
    note.bytes.insert(note.bytes.end(), kept.begin(), kept.end());
    note.track = change.place.track;
    note.tick = change.place.event->tick;
    return note;
}

std::int64_t CountOf(const SysexSession& session, SysexNote::What what) {
    return std::ranges::count(session.changes, what, &SysexChange::what);
}

} // namespace

const SysexIndex& IndexOf(Song& song, SysexSession& session) {
    if (!session.index) {
        WithMemory(session, [&] { session.index = SysexIndex::Of(song); });
    }
    return *session.index;
}

std::int32_t SearchEnd(const Song& song, std::int32_t own) {
    return std::max(kSearchedQuarters * song::EffectiveDivision(song), own);
}

void RaiseEnds(Song& song, std::int32_t tick) {
    for (song::Track& track : song.tracks) {
        if (track.ignored == 0 && track.last && track.last->tick <= tick &&
            track.last->tick < song.songLength) {
            track.last->tick = song.songLength;
            track.last->timeMs = MsOfTick(song, song.songLength);
        }
    }
}

EventLink PlaceFor(EventLink start, std::int32_t tick) {
    if (!start || start->tick > tick) {
        return {};
    }
    while (start->next && start->next->tick <= tick) {
        start = start->next;
    }
    return start->next ? start : EventLink();
}

EventLink InsertMessage(Song& song, SysexSession& session, const Insertion& where,
                        SysexBytes data) {
    if (const EventLink removed = RemovedMessage(song, session, where, data)) {
        Revive(session, {removed, where.track});
        return removed;
    }
    const EventLink event = InsertNew(song, session, where, data);
    if (event) {
        AddChange(session, SysexNote::What::Inserted, {event, where.track});
    }
    return event;
}

void PutMessage(Song& song, SysexSession& session, const Insertion& where, SysexBytes data) {
    const EventLink event = InsertBehind(song, session, where, where.start, data);
    AddChange(session, SysexNote::What::Inserted, {event, where.track});
}

EventLink InsertPlaceholder(Song& song, SysexSession& session, const Insertion& where,
                            SysexBytes data) {
    if (const EventLink there = RemovedMessage(song, session, where, data)) {
        return there;
    }
    const EventLink event = InsertNew(song, session, where, data);
    if (event) {
        event->length = 0;
    }
    return event;
}

void RemoveMessage(SysexSession& session, const SysexPlace& place) {
    AddChange(session, SysexNote::What::Removed, place);
    place.event->length = 0;
}

void KeepFound(SysexSession& session, SysexFind kind, const SysexPlace& place) {
    WithMemory(session, [&] { session.found.at(static_cast<std::size_t>(kind)).push_back(place); });
    AddChange(session, SysexNote::What::Found, place);
}

void WriteReport(SysexSession& session) {
    PreparationReport& report = session.report;
    report.inserted = CountOf(session, SysexNote::What::Inserted);
    report.removed = CountOf(session, SysexNote::What::Removed);
    report.found = CountOf(session, SysexNote::What::Found);
    report.drumMap = session.drumMap;
    WithMemory(session, [&] {
        report.notes.clear();
        const std::size_t count = std::min(session.changes.size(), kMostNotes);
        report.notes.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            report.notes.push_back(NoteOf(session.changes[i]));
        }
    });
}

} // namespace tracksmith::instruments
