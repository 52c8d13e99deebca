#include "editing/seam_picture.h"

#include <algorithm>
#include <bitset>
#include <tuple>

#include "song/note_pairing.h"
#include "song/song_position.h"

namespace tracksmith::editing {
namespace {

using Keys = std::bitset<song::NotePairing::kKeys>;

/// The last ticks before a seam at which its notes are ended.
constexpr std::int32_t kEndingTicks = 2;

std::size_t KeyOf(std::uint8_t channel, std::uint8_t pitch) {
    constexpr std::size_t kPitches = 128;
    return channel * kPitches + pitch % kPitches;
}

/// Calls `take` with every note of the song: its note-on and its note-off.
template <typename Take>
void ForEachNote(const song::Song& song, const Take& take) {
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event; event = event->next) {
            if (event->Command() == song::kNoteOff && event->length > 0 && event->noteOnLink) {
                take(*song::ConstEventLink(event->noteOnLink), *event);
            }
        }
    }
}

// The pitches that sound over `tick`.
Keys KeysAcross(const song::Song& song, std::int32_t tick) {
    Keys keys;
    ForEachNote(song, [&](const song::MidiEvent& on, const song::MidiEvent& off) {
        if (on.tick < tick && off.tick > tick) {
            keys.set(KeyOf(on.Channel(), on.data1));
        }
    });
    return keys;
}

struct SeamKeys {
    Keys ended;
    Keys begunAgain;
};

SeamKeys KeysOf(const song::Song& before, RangeTool tool, const TickRange& range, bool atEnd) {
    if (tool == RangeTool::Delete) {
        return {KeysAcross(before, range.start), KeysAcross(before, range.end)};
    }
    const Keys destination = KeysAcross(before, range.destination);
    return atEnd ? SeamKeys{KeysAcross(before, range.end), destination}
                 : SeamKeys{destination, KeysAcross(before, range.start)};
}

} // namespace

std::int32_t SeamTick(RangeTool tool, const TickRange& range, bool atEnd) {
    if (tool != RangeTool::Copy) {
        return range.start;
    }
    return atEnd ? range.destination + range.Length() : range.destination;
}

SeamSpan SpanAround(const song::TimeMap& after, std::int32_t seam) {
    const auto measureAt = [&](std::int32_t tick) {
        return static_cast<std::int32_t>(song::TicksInMeasureAtPos(after, tick));
    };
    const std::int32_t last = std::max(seam - 1, 0);
    return {std::max(seam - measureAt(last), 0),
            std::min(seam + measureAt(seam), after.songLength)};
}

SeamPicture PictureSeam(const song::Song& before, const song::Song& after, RangeTool tool,
                        const TickRange& range, bool atEnd) {
    SeamPicture picture;
    picture.seam = SeamTick(tool, range, atEnd);
    const SeamSpan span = SpanAround(after, picture.seam);
    picture.from = span.from;
    picture.to = span.to;
    const SeamKeys keys = KeysOf(before, tool, range, atEnd);
    ForEachNote(after, [&](const song::MidiEvent& on, const song::MidiEvent& off) {
        if (on.tick >= picture.to || off.tick <= picture.from) {
            return;
        }
        const std::size_t key = KeyOf(on.Channel(), on.data1);
        const bool ends = off.tick < picture.seam && off.tick >= picture.seam - kEndingTicks;
        picture.notes.push_back({on.Channel(), on.data1, on.tick, off.tick, ends && keys.ended[key],
                                 on.tick == picture.seam && keys.begunAgain[key]});
    });
    std::ranges::sort(picture.notes, {}, [](const SeamNote& note) {
        return std::tuple(note.channel, note.start, note.pitch);
    });
    return picture;
}

} // namespace tracksmith::editing
