#include "editing/foresight.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "editing/chord_names.h"
#include "editing/song_copy.h"
#include "song/note_pairing.h"
#include "song/time_map.h"

namespace tracksmith::editing {
namespace {

// As many as a look can take in.
constexpr std::size_t kMostChords = 12;

Foresight Begin(const song::Song& song, RangeReading reading) {
    Foresight foresight;
    foresight.reading = std::move(reading);
    if (foresight.reading.fault.empty()) {
        foresight.figures = CountRange(song, foresight.reading.range);
        foresight.after = std::make_unique<song::Song>();
        CopySong(song, *foresight.after);
    }
    return foresight;
}

void BringInOrder(song::Song& song) {
    song::SetNoteOnOffPointers(song);
    song::UpdateTimeZoneData(song);
}

void CountNote(const song::MidiEvent& before, const song::MidiEvent& after, int semitones,
               ChannelMove& move) {
    ++move.notes;
    move.lowest = std::min(move.lowest, before.origData1);
    move.highest = std::max(move.highest, before.origData1);
    move.lowestAfter = std::min(move.lowestAfter, after.origData1);
    move.highestAfter = std::max(move.highestAfter, after.origData1);
    if (before.origData1 != after.origData1) {
        ++move.moved;
        move.folded += before.origData1 + semitones != after.origData1;
    }
}

// Transposing leaves every event in its place, so both songs are walked side by side.
void CountMoves(const song::Song& song, const TransposeWish& wish, Foresight& foresight) {
    for (std::size_t index = 0; index < song.tracks.size(); ++index) {
        song::ConstEventLink after = foresight.after->tracks[index].first;
        for (song::ConstEventLink event = song.tracks[index].first;
             event && after && event->tick < wish.range.end;
             event = event->next, after = after->next) {
            if (event->tick >= wish.range.start && event->IsNoteOn() && event->length > 0) {
                CountNote(*event, *after, wish.semitones, foresight.moves.at(event->Channel()));
            }
        }
    }
}

} // namespace

Foresight ForeseeDelete(const song::Song& song, const RangeWish& wish, Language language) {
    Foresight foresight = Begin(song, CheckDelete(song, wish, language));
    if (foresight.after) {
        foresight.seams = DeleteRange(*foresight.after, foresight.reading.range);
        BringInOrder(*foresight.after);
    }
    return foresight;
}

Foresight ForeseeCopy(const song::Song& song, const RangeWish& wish, bool bringState,
                      Language language) {
    Foresight foresight = Begin(song, CheckCopy(song, wish, language));
    if (foresight.after) {
        foresight.seams = CopyRange(*foresight.after, foresight.reading.range, bringState);
        BringInOrder(*foresight.after);
    }
    return foresight;
}

Foresight ForeseeTranspose(const song::Song& song, const RangeWish& wish,
                           const Transposing& transposing, Language language) {
    TransposeCheck check = CheckTranspose(song, wish, transposing, language);
    Foresight foresight = Begin(song, std::move(check.reading));
    if (foresight.after) {
        TransposeRange(*foresight.after, check.wish);
        CountMoves(song, check.wish, foresight);
        foresight.chords = ChordsIn(song, check.wish.range, kMostChords);
        foresight.chordsAfter = ChordsIn(*foresight.after, check.wish.range, kMostChords);
        BringInOrder(*foresight.after);
    }
    return foresight;
}

} // namespace tracksmith::editing
