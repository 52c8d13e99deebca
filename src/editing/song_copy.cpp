#include "editing/song_copy.h"

#include <utility>

#include "editing/event_copy.h"
#include "song/event_chain.h"
#include "song/note_pairing.h"

namespace tracksmith::editing {

void AppendTrack(const song::Track& source, song::Song& target) {
    song::Track track = source;
    song::InitTrack(target, track);
    track.trackSetting = source.trackSetting;
    track.trackFlags = source.trackFlags;
    track.trackMark = source.trackMark;
    track.ignored = source.ignored;
    track.channel = source.channel;
    track.name = source.name;
    track.muted = source.muted;
    track.timeShiftMs = source.timeShiftMs;
    for (song::ConstEventLink event = source.first->next; event; event = event->next) {
        song::AppendEvent(track, CopyEvent(*event, target.pool));
    }
    track.cursor = track.first;
    target.tracks.push_back(std::move(track));
    target.keySignatures.emplace_back();
    target.trackCount = static_cast<std::int32_t>(target.tracks.size());
}

void CopySong(const song::Song& source, song::Song& target) {
    song::ClearSong(target);
    song::SongRecord record = static_cast<const song::SongRecord&>(source);
    record.tracks.clear();
    record.keySignatures.clear();
    static_cast<song::SongRecord&>(target) = std::move(record);
    for (const song::Track& track : source.tracks) {
        AppendTrack(track, target);
    }
    target.keySignatures = source.keySignatures;
    song::SetNoteOnOffPointers(target);
}

} // namespace tracksmith::editing
