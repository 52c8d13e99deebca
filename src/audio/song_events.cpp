#include "audio/song_events.h"

namespace tracksmith::audio {
namespace {

bool IsSendable(const song::MidiEvent& event) {
    return event.length > 0 && (event.IsChannelMessage() || event.status == song::kSystemExclusive);
}

} // namespace

bool SongEvents::Later::operator()(const Cursor& left, const Cursor& right) const {
    if (left.event->tick != right.event->tick) {
        return left.event->tick > right.event->tick;
    }
    return left.track > right.track;
}

SongEvents::SongEvents(const song::Song& song) {
    for (std::size_t track = 0; track < song.tracks.size(); ++track) {
        if (song.tracks[track].ignored == 0) {
            Push(song.tracks[track].first, track);
        }
    }
}

const song::MidiEvent* SongEvents::Peek() const {
    return queue_.empty() ? nullptr : queue_.top().event.Get();
}

void SongEvents::Advance() {
    const Cursor cursor = queue_.top();
    queue_.pop();
    Push(cursor.event->next, cursor.track);
}

void SongEvents::Push(song::ConstEventLink event, std::size_t track) {
    while (event && !IsSendable(*event)) {
        event = event->next;
    }
    if (event) {
        queue_.push({event, track});
    }
}

} // namespace tracksmith::audio
