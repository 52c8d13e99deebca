#include "song/lead_in.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "song/event_chain.h"
#include "song/time_map.h"
#include "song/track_walk.h"

namespace tracksmith::song {
namespace {

// Highest tick of a song, see the reader.
constexpr std::int64_t kMostTicks = std::numeric_limits<std::int32_t>::max() - 65'536;

// What is sung or played at its place, unlike titles and set-up.
bool BelongsToMusic(const MidiEvent& event) {
    constexpr std::uint8_t kMetaCuePoint = 0x07;
    return event.IsMeta(kMetaLyric) || event.IsMeta(kMetaMarker) || event.IsMeta(kMetaCuePoint);
}

// Chooses the events at tick 0 that move, in the order of playing.
class FirstTick {
public:
    bool Moves(const MidiEvent& event) {
        if (!event.IsChannelMessage()) {
            return BelongsToMusic(event);
        }
        bool& played = played_.at(event.Channel());
        played = played || event.Command() == kNoteOn || event.Command() == kNoteOff;
        return played;
    }

private:
    std::array<bool, kMidiChannels> played_{};
};

struct Mover {
    EventLink event;
    std::size_t track = 0;
};

std::vector<Mover> MoversAtZero(Song& song) {
    std::vector<Mover> movers;
    FirstTick first;
    TrackWalk<TickOrder, EveryEvent, Song> walk(song);
    for (MidiEvent* event = walk.Peek(); event != nullptr && event->tick == 0;
         event = walk.Peek()) {
        const std::size_t track = walk.NextTrack();
        if (first.Moves(*event)) {
            movers.push_back({LinkTo(*event), track});
        }
        walk.Take();
    }
    return movers;
}

void MoveLater(Song& song, std::int32_t ticks) {
    for (Track& track : song.tracks) {
        EventLink event = track.first;
        while (event && event->tick == 0) {
            event = event->next;
        }
        for (; event; event = event->next) {
            event->tick += ticks;
        }
    }
}

// Behind what stays at tick 0, in their order.
void MoveFirst(Song& song, const std::vector<Mover>& movers, std::int32_t ticks) {
    std::vector<EventLink> place(song.tracks.size());
    for (const auto& [event, index] : movers) {
        Track& track = song.tracks[index];
        UnlinkEvent(track, event);
        EventLink& before = place[index];
        if (!before) {
            before = track.first;
            while (before->next && before->next->tick == 0) {
                before = before->next;
            }
        }
        event->tick = ticks;
        InsertAfter(track, before, event);
        before = event;
    }
}

} // namespace

std::int32_t FirstMeasureTicks(const TimeMap& map) {
    std::int64_t ticks = std::int64_t{4} * EffectiveDivision(map);
    if (!map.timeSignatures.empty() && map.timeSignatures.front().tick == 0) {
        const TimeSignatureEntry& signature = map.timeSignatures.front();
        ticks = ticks * signature.numerator / std::max<std::int64_t>(signature.denominator, 1);
    }
    return static_cast<std::int32_t>(std::max<std::int64_t>(ticks, 1));
}

bool InsertLeadInMeasure(Song& song) {
    const std::int32_t ticks = FirstMeasureTicks(song);
    if (song.songLength + std::int64_t{ticks} > kMostTicks) {
        return false;
    }
    const std::vector<Mover> movers = MoversAtZero(song);
    MoveLater(song, ticks);
    MoveFirst(song, movers, ticks);
    song.songLength += ticks;
    UpdateTimeZoneData(song);
    return true;
}

} // namespace tracksmith::song
