#include "instruments/sysex/keep_drum_parts.h"

#include <algorithm>

#include "instruments/sysex/drum_part_walk.h"
#include "instruments/sysex/sysex_edit.h"

namespace tracksmith::instruments {
namespace {

constexpr int kMostEventsBeforeDrums = 50'000;

bool SelectsOtherBank(const song::MidiEvent& event) {
    return event.length > 0 && event.Command() == song::kControlChange &&
           event.Channel() == song::kDrumChannel && event.data1 == song::kBankMsb &&
           (event.data2 & 0x7F) != song::kXgDrumBank;
}

struct OpenTracks : song::EveryEvent {
    static bool Enters(const song::Track& track) { return track.ignored == 0; }
};

bool TrackSelectsOtherBank(const song::Track& track) {
    song::ConstEventLink event = track.first;
    while (event && !SelectsOtherBank(*event)) {
        event = event->next;
    }
    return static_cast<bool>(event);
}

// Whether channel 10 has a bank that is a melody bank under XG. In tracks of several channels only
// its beginning is looked at, so that no time is lost on long songs.
bool DrumChannelHasBank(const song::Song& song) {
    const auto drums = [](const song::Track& track) {
        return track.ignored == 0 && track.channel == song::kDrumChannel;
    };
    if (std::ranges::any_of(song.tracks, [&](const song::Track& track) {
            return drums(track) && TrackSelectsOtherBank(track);
        })) {
        return true;
    }
    song::TrackWalk<song::TickOrder, OpenTracks> walk(song);
    for (int i = 0; i < kMostEventsBeforeDrums; ++i) {
        const song::MidiEvent* event = walk.Take();
        if (event == nullptr || (event->IsNoteOn() && event->Channel() == song::kDrumChannel)) {
            return false;
        }
        if (SelectsOtherBank(*event)) {
            return true;
        }
    }
    return false;
}

// Whether a message of the song makes drums where the instrument would not by itself.
bool MakesDrums(SysexBytes data, DrumWay way) {
    const ResetKind kind = ResetKindOf(data);
    return (kind == ResetKind::Xg && way != DrumWay::BankXg) ||
           (kind == ResetKind::Gm2 && way != DrumWay::BankGm2) || PartModeOf(data).has_value();
}

bool Concerns(song::Song& song, SysexSession& session, DrumWay way) {
    const SetUpMarks marks(song, session);
    const SysexIndex& index = IndexOf(song, session);
    if (index.DrumBanks() && (way == DrumWay::BankXg || way == DrumWay::BankGm2)) {
        return true;
    }
    const auto places = index.Places();
    const bool messages = std::ranges::any_of(places, [&](const song::SysexPlace& place) {
        const SetUpMark mark = marks.Of(place.event);
        const bool counts =
            mark.effect == SetUpEffect::Resets || mark.effect == SetUpEffect::ChangesPart;
        return counts && MakesDrums(place.event->data.Bytes(), way);
    });
    return messages || (way == DrumWay::BankXg && DrumChannelHasBank(song));
}

} // namespace

void KeepDrumParts(song::Song& song, SysexSession& session) {
    WithMemory(session, [&] {
        const DrumWay way = DrumWayOf(session.report.instrument);
        if (!StepsOf(session.report.instrument).empty() && Concerns(song, session, way)) {
            DrumPartWalk(song, session, way).Run();
        }
    });
}

} // namespace tracksmith::instruments
