#include "app/health/note_figure.h"

#include <algorithm>

#include "app/health/repair.h"
#include "song/event_chain.h"
#include "song/note_pairing.h"
#include "song/song_position.h"
#include "song/track_notes.h"

namespace tracksmith::health {
namespace {

using song::MidiEvent;
using song::Song;

/// Ticks from one to the other, both included.
struct Range {
    std::int64_t from = 0;
    std::int64_t to = 0;

    bool Has(std::int32_t tick) const { return tick >= from && tick <= to; }
};

bool ChangesNotes(const Finding& finding) {
    switch (finding.rule) {
        case Rule::NoteWithoutEnd:
        case Rule::NoteWithoutBeginning:
        case Rule::Overlaps:
        case Rule::ShortNotes:
            return finding.repairable;
        default:
            return false;
    }
}

// The note-ons of the range, the note-offs that end them and those that end none.
bool IsWanted(const MidiEvent& event, std::uint8_t channel, const Range& range) {
    if (event.length <= 0 || !event.IsChannelMessage() || event.Channel() != channel) {
        return false;
    }
    if (event.IsNoteOn()) {
        return range.Has(event.tick);
    }
    return event.Command() == song::kNoteOff &&
           range.Has(event.noteOnLink ? event.noteOnLink->tick : event.tick);
}

/// A song of the wanted notes alone, track by track.
class Excerpt {
public:
    Excerpt(const Song& from, std::uint8_t channel, const Range& range) {
        song_.division = from.division;
        song_.songLength = from.songLength;
        song_.tracks.resize(from.tracks.size());
        song_.trackCount = from.trackCount;
        std::int32_t last = 0;
        for (std::size_t i = 0; i < from.tracks.size(); ++i) {
            last = std::max(last, CopyTrack(from.tracks[i], song_.tracks[i], channel, range));
        }
        // Where the music ends, which repairs look for.
        if (!song_.tracks.empty()) {
            song::InsertByTick(
                song_.tracks.back(),
                song::NewShortEvent(song_.pool, last,
                                    static_cast<std::uint8_t>(song::kChannelPressure | channel), 0,
                                    0));
        }
        song::SetNoteOnOffPointers(song_);
    }

    Song& Get() { return song_; }

private:
    // Returns the tick of the track's last channel message.
    std::int32_t CopyTrack(const song::Track& from, song::Track& to, std::uint8_t channel,
                           const Range& range) {
        song::InitTrack(song_, to);
        to.ignored = from.ignored;
        std::int32_t last = 0;
        for (song::ConstEventLink event = from.first; event; event = event->next) {
            last = event->IsChannelMessage() ? event->tick : last;
            if (IsWanted(*event, channel, range)) {
                song::AppendEvent(to, song::NewShortEvent(song_.pool, event->tick, event->status,
                                                          event->data1, event->data2));
            }
        }
        song::AppendEvent(
            to, song::NewMetaEvent(song_.pool, song_.songLength, song::kMetaEndOfTrack, {}));
        return last;
    }

    Song song_;
};

// In the order of their note-ons, which no repair changes; note-offs without notes behind them.
std::vector<FigureNote> NotesOf(const Song& song) {
    std::vector<FigureNote> notes;
    std::vector<FigureNote> strays;
    for (const song::Track& track : song.tracks) {
        if (track.ignored != 0) {
            continue;
        }
        const song::TrackNotes all = song::NotesOfTrack(track);
        for (const song::TrackNote& note : all.notes) {
            notes.push_back({note.on->data1, note.on->tick,
                             note.off ? note.off->tick : FigureNote::kNoEnd, false});
        }
        for (const song::ConstEventLink off : all.strays) {
            strays.push_back({off->data1, off->tick, off->tick, true});
        }
    }
    notes.insert(notes.end(), strays.begin(), strays.end());
    return notes;
}

void MarkChanges(std::vector<FigureNote>& now, std::vector<FigureNote>& after) {
    for (std::size_t i = 0; i < std::min(now.size(), after.size()); ++i) {
        now[i].changed = now[i].changed || now[i].end != after[i].end;
        after[i].changed = now[i].changed;
    }
}

void KeepVisible(std::vector<FigureNote>& notes, const NoteFigure& figure) {
    std::erase_if(notes, [&](const FigureNote& note) {
        return note.begin > figure.to || note.end < figure.from;
    });
}

} // namespace

NoteFigure FigureOf(const Song& song, const Finding& finding, std::int32_t tick,
                    const HealthOptions& options) {
    constexpr std::int64_t kMeasuresAround = 4; // so far a repair looks for other notes
    NoteFigure figure;
    if (!ChangesNotes(finding)) {
        return figure;
    }
    const std::int64_t measure = std::max<std::int64_t>(song::TicksInMeasureAtPos(song, tick), 1);
    // Short notes could not be seen in a whole measure.
    const std::int64_t around = finding.rule == Rule::ShortNotes ? measure / 8 + 1 : measure;
    figure.from = static_cast<std::int32_t>(std::max<std::int64_t>(0, tick - around / 2));
    figure.to = static_cast<std::int32_t>(
        std::min<std::int64_t>(song.songLength, tick + around + around / 2));
    Excerpt excerpt(
        song, finding.channel,
        {figure.from - kMeasuresAround * measure, figure.to + kMeasuresAround * measure});
    figure.now = NotesOf(excerpt.Get());
    RepairSong(excerpt.Get(), {&finding, 1}, options);
    figure.after = NotesOf(excerpt.Get());
    MarkChanges(figure.now, figure.after);
    KeepVisible(figure.now, figure);
    KeepVisible(figure.after, figure);
    return figure;
}

} // namespace tracksmith::health
