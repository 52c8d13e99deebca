#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/diff/change_list.h"
#include "app/diff/event_slot.h"
#include "song/song.h"

namespace tracksmith::diff {

/// Ticks from `begin` to before `end` of one song.
struct TickStretch {
    std::int64_t begin = 0;
    std::int64_t end = 0;
    bool Contains(std::int64_t tick) const { return tick >= begin && tick < end; }
};

/// What differs at the edges of a stretch that was cut or put in. A range tool ends and begins
/// notes there and sets again what the song has set before: such events stand elsewhere in the
/// other song and say nothing new. One thread.
class EdgeItems {
public:
    /// The voice of an event's channel in both songs.
    struct Voices {
        VoiceBytes before = kNoVoice;
        VoiceBytes after = kNoVoice;
    };

    /// One event, or its absence (null), in each song; the songs must live on.
    void Add(const Item* before, const Item* after, const PlacePair& places, const Voices& voices);

    /// Adds what is new to the list; returns how many events are not. Note-ons that stand in the
    /// stretches, which are those of each song beside the edges, are known. Linear in the songs'
    /// size where there is anything to look for.
    std::int64_t Tell(const song::Song& before, TickStretch beforeStretch, const song::Song& after,
                      TickStretch afterStretch, ChangeList& list) const;

private:
    struct Entry {
        std::optional<Item> before;
        std::optional<Item> after;
        PlacePair places;
        Voices voices;
    };

    std::vector<Entry> entries_;
};

} // namespace tracksmith::diff
