#include "instruments/picker/voice_place.h"

#include <algorithm>

#include "song/song_position.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;

// As far as the set-up messages of a song go where no note says so, in quarter notes.
constexpr std::int32_t kSetUpBeats = 8;

/// The first event of a kind in playing order.
struct First {
    EventLink event;
    std::size_t track = 0;

    // Events of one tick play in the order of their tracks, which are visited in that order.
    void Take(EventLink candidate, std::size_t itsTrack) {
        if (!event || candidate->tick < event->tick) {
            event = candidate;
            track = itsTrack;
        }
    }
};

/// What decides where a voice goes.
struct Landmarks {
    First note;
    First ofChannel;
};

Landmarks FindLandmarks(song::Song& song, std::size_t channel) {
    Landmarks found;
    for (std::size_t track = 0; track < song.tracks.size(); ++track) {
        EventLink event;
        if (song.tracks[track].ignored == 0) {
            event = song.tracks[track].first;
        }
        for (; event; event = event->next) {
            if (!event->IsChannelMessage() || event->Channel() != channel || event->length == 0) {
                continue;
            }
            found.ofChannel.Take(event, track);
            if (event->IsNoteOn()) {
                found.note.Take(event, track);
            }
        }
    }
    return found;
}

// The time from which the instrument takes voices: a pause behind the last set-up message.
std::int64_t ReadyMs(const song::Song& song, std::int32_t before) {
    std::int64_t ready = 0;
    for (const song::Track& track : song.tracks) {
        song::ConstEventLink event;
        if (track.ignored == 0) {
            event = track.first;
        }
        for (; event && event->tick <= before; event = event->next) {
            if (event->status == song::kSystemExclusive && event->length != 0) {
                ready = std::max(ready, event->timeMs + kSetUpPauseMs);
            }
        }
    }
    return ready;
}

// The first tick that sounds no earlier than `ms`.
std::int32_t TickNotBefore(const song::Song& song, std::int64_t ms) {
    std::int64_t tick = std::max<std::int64_t>(0, song::MsToTick(song, ms));
    while (tick < song.songLength && song::TickToMs(song, tick) < ms) {
        ++tick;
    }
    return static_cast<std::int32_t>(std::min<std::int64_t>(tick, song.songLength));
}

// The last event at or before `tick`, never End of Track.
EventLink LastUpTo(song::Track& track, std::int32_t tick) {
    EventLink place = track.first;
    while (place->next && place->next->tick <= tick &&
           !place->next->IsMeta(song::kMetaEndOfTrack)) {
        place = place->next;
    }
    return place;
}

} // namespace

VoicePlace PlaceForVoice(song::Song& song, std::size_t channel) {
    const Landmarks found = FindLandmarks(song, channel);
    if (!found.ofChannel.event) {
        return {};
    }
    const EventLink note = found.note.event;
    const std::int32_t setUpEnd = note ? note->tick : kSetUpBeats * song::EffectiveDivision(song);
    const std::int32_t tick = TickNotBefore(song, ReadyMs(song, setUpEnd));
    if (note && tick >= note->tick) {
        return {note->prev, found.note.track, note->tick, note->timeMs};
    }
    const std::size_t track = note ? found.note.track : found.ofChannel.track;
    return {LastUpTo(song.tracks[track], tick), track, tick,
            static_cast<std::int32_t>(song::TickToMs(song, tick))};
}

} // namespace tracksmith::instruments
