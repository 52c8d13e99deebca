#include "instruments/picker/patch_state.h"

#include <algorithm>
#include <utility>

#include "song/track_walk.h"

namespace tracksmith::instruments {
namespace {

using song::ConstEventLink;
using song::MidiEvent;

/// The events that take part in selecting voices, of tracks that are not ignored. Removed events
/// stay in their chain without length.
struct SelectingEvents : song::EveryEvent {
    static bool Enters(const song::Track& track) { return track.ignored == 0; }
    static bool Wants(const MidiEvent& event) {
        const bool isBank = event.Command() == song::kControlChange &&
                            (event.data1 == song::kBankMsb || event.data1 == song::kBankLsb);
        return event.kind == song::kShortMessage && event.length != 0 &&
               (isBank || event.Command() == song::kProgramChange);
    }
};

// Walks the events of one channel in playing order and notes what each program change ends up with.
class ChangeList {
public:
    explicit ChangeList(VoiceNumbers start) {
        next_.state.bankMsb = start.msb;
        next_.state.bankLsb = start.lsb;
    }

    void Take(const MidiEvent& event, std::size_t track) {
        const ConstEventLink link = song::LinkTo(event);
        if (event.Command() == song::kProgramChange) {
            next_.state.program = event.data1;
            next_.state.programEvent = link;
            next_.tick = event.tick;
            next_.track = track;
            changes_.push_back(next_);
            next_.state.bankMsbEvent = next_.state.bankLsbEvent = ConstEventLink();
        } else if (event.data1 == song::kBankMsb) {
            next_.state.bankMsb = event.data2;
            next_.state.bankMsbEvent = link;
        } else {
            next_.state.bankLsb = event.data2;
            next_.state.bankLsbEvent = link;
        }
    }

    std::vector<VoiceChange> Result() { return std::move(changes_); }

private:
    VoiceChange next_;
    std::vector<VoiceChange> changes_;
};

} // namespace

SongPatches::SongPatches(const song::Song& song, const StartBanks& start) : start_(start) {
    std::vector<ChangeList> lists(start.begin(), start.end());
    song::TrackWalk<song::TickOrder, SelectingEvents> walk(song);
    while (walk.Peek() != nullptr) {
        const std::size_t track = walk.NextTrack();
        const MidiEvent& event = *walk.Take();
        lists[event.Channel()].Take(event, track);
    }
    std::ranges::transform(lists, changes_.begin(), &ChangeList::Result);
}

std::size_t SongPatches::ChangeAt(std::size_t channel, std::int32_t tick) const {
    const std::vector<VoiceChange>& changes = changes_[channel];
    const auto after = std::ranges::upper_bound(changes, tick, {}, &VoiceChange::tick);
    const auto index = static_cast<std::size_t>(after - changes.begin());
    return index == 0 ? 0 : index - 1;
}

PatchState SongPatches::StateAt(std::size_t channel, std::int32_t tick) const {
    if (!changes_[channel].empty()) {
        return changes_[channel][ChangeAt(channel, tick)].state;
    }
    PatchState state;
    state.bankMsb = start_[channel].msb;
    state.bankLsb = start_[channel].lsb;
    return state;
}

} // namespace tracksmith::instruments
