#include "song/song_length.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "song/event_walker.h"

namespace tracksmith::song {
namespace {

bool CountsForLength(const MidiEvent& event) {
    return event.status != kMeta || event.metaType < kMetaEndOfTrack;
}

} // namespace

std::int32_t FindSongLength(const Song& song) {
    std::uint32_t largest = 0;
    for (const Track& track : song.tracks) {
        // The chain is in the order of ticks, so the first from behind is the largest.
        ConstEventLink event = track.last;
        while (event && !CountsForLength(*event)) {
            event = event->prev;
        }
        if (event) {
            largest = std::max(largest, static_cast<std::uint32_t>(event->tick));
        }
    }
    return static_cast<std::int32_t>(
        std::clamp(largest + kRoomBehindLastEvent, kShortestSong, kMostTick));
}

void RenewSongLength(Song& song) {
    song.songLength = FindSongLength(song);
    song.keySignatures.resize(song.tracks.size());
    for (std::size_t index = 0; index < song.tracks.size(); ++index) {
        Track& track = song.tracks[index];
        std::vector<KeySignatureEntry>& keys = song.keySignatures[index];
        keys.clear();
        for (ConstEventLink event = track.first; event; event = event->next) {
            if (event->IsMeta(kMetaKeySignature)) {
                keys.push_back(
                    {static_cast<std::int8_t>(event->data[0]), event->data[1], event->tick});
            }
        }
        track.last->tick = song.songLength;
    }
}

} // namespace tracksmith::song
