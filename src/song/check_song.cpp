#include "song/check_song.h"

#include <cstddef>

namespace tracksmith::song {
namespace {

std::string At(std::size_t track, const char* fault, std::int64_t tick = -1) {
    std::string text = "track " + std::to_string(track) + ": " + fault;
    return tick < 0 ? text : text + " at tick " + std::to_string(tick);
}

bool IsHead(const MidiEvent& event) {
    return event.IsMeta(kMetaPort) && event.kind == kLongMessage && event.length == 1 &&
           event.tick == 0 && event.data.Size() == 1 && event.data[0] == 0;
}

// What is wrong with the event by itself, null when nothing.
const char* EventFault(const MidiEvent& event) {
    if (event.status < 0x80 || event.length < 0 || event.tick < 0) {
        return "status, length or tick out of range";
    }
    if (event.kind == kShortMessage) {
        if (event.metaType != kNoMeta || !event.data.Empty() || event.data1 > 127) {
            return "short message with foreign fields";
        }
    } else if (event.kind != kLongMessage || event.status < 0xF0) {
        return "kind does not fit the status";
    } else if (event.status != kMeta && event.metaType != kNoMeta) {
        return "meta type on an event that is none";
    }
    if (event.IsNoteOn() && event.data2 == 0) {
        return "note-on with velocity 0";
    }
    return nullptr;
}

// The chain between its ends; `count` is what was walked.
std::string CheckChain(const Track& track, std::size_t index, std::int32_t& count) {
    ConstEventLink previous;
    for (ConstEventLink event = track.first; event; event = event->next) {
        if (event->prev != previous) {
            return At(index, "links disagree", event->tick);
        }
        if (const char* fault = EventFault(*event)) {
            return At(index, fault, event->tick);
        }
        const bool end = event->IsMeta(kMetaEndOfTrack);
        if (end != (event == track.last)) {
            return At(index, "End of Track is not the last event", event->tick);
        }
        if (previous && !end && event->tick < previous->tick) {
            return At(index, "ticks fall", event->tick);
        }
        if (++count > track.eventCount) {
            return At(index, "more events than counted");
        }
        previous = event;
    }
    return previous == track.last ? std::string()
                                  : At(index, "chain does not reach its last event");
}

// Whether an event counts towards the song's length.
bool CountsForLength(const MidiEvent& event) {
    return event.status != kMeta || event.metaType < kMetaEndOfTrack;
}

std::string CheckTrack(const Song& song, const Track& track, std::size_t index) {
    if (!track.first || !track.last || !IsHead(*track.first)) {
        return At(index, "no head event");
    }
    std::int32_t count = 0;
    std::string fault = CheckChain(track, index, count);
    if (!fault.empty()) {
        return fault;
    }
    if (count != track.eventCount) {
        return At(index, "fewer events than counted");
    }
    if (track.last->tick != song.songLength) {
        return At(index, "End of Track is not at the song's length", track.last->tick);
    }
    for (ConstEventLink event = track.first; event != track.last; event = event->next) {
        if (CountsForLength(*event) && event->tick > song.songLength) {
            return At(index, "event behind the song's length", event->tick);
        }
    }
    return {};
}

template <typename Entry>
bool Agrees(const std::vector<Entry>& entries, std::int32_t count) {
    return entries.size() == static_cast<std::size_t>(count);
}

} // namespace

std::string CheckSong(const Song& song) {
    if (!Agrees(song.tracks, song.trackCount) || !Agrees(song.tempos, song.tempoCount) ||
        !Agrees(song.timeSignatures, song.timeSignatureCount) ||
        song.keySignatures.size() != song.tracks.size()) {
        return "a count and its list disagree";
    }
    for (std::size_t i = 0; i < song.tracks.size(); ++i) {
        std::string fault = CheckTrack(song, song.tracks[i], i);
        if (!fault.empty()) {
            return fault;
        }
    }
    return {};
}

} // namespace tracksmith::song
