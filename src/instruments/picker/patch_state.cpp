#include "instruments/picker/patch_state.h"

#include <algorithm>
#include <utility>

namespace tracksmith::instruments {
namespace {

/// An event that takes part in selecting a voice.
struct Selecting {
    std::int32_t tick;
    std::uint32_t track;
    song::EventLink event;
};

using Found = std::array<std::vector<Selecting>, kChannels>;

// Removed events stay in the chain without length.
bool Selects(const song::MidiEvent& event) {
    if (event.kind != song::kShortMessage || event.length == 0) {
        return false;
    }
    return event.Command() == song::kProgramChange ||
           (event.Command() == song::kControlChange &&
            (event.data1 == kBankSelectMsb || event.data1 == kBankSelectLsb));
}

Found Collect(song::Song& song) {
    Found found;
    for (std::uint32_t track = 0; track < song.tracks.size(); ++track) {
        if (song.tracks[track].ignored != 0) {
            continue;
        }
        for (song::EventLink event = song.tracks[track].first; event; event = event->next) {
            if (Selects(*event)) {
                found[event->Channel()].push_back({event->tick, track, event});
            }
        }
    }
    return found;
}

// Walks the events of one channel in playing order and notes what each program change ends up with.
class ChangeList {
public:
    explicit ChangeList(VoiceNumbers start) {
        next_.state.bankMsb = start.msb;
        next_.state.bankLsb = start.lsb;
    }

    void Take(const Selecting& selecting) {
        const song::MidiEvent& event = *selecting.event;
        if (event.Command() == song::kProgramChange) {
            next_.state.program = event.data1;
            next_.state.programEvent = selecting.event;
            next_.tick = selecting.tick;
            next_.track = selecting.track;
            changes_.push_back(next_);
            next_.state.bankMsbEvent = next_.state.bankLsbEvent = song::EventLink();
        } else if (event.data1 == kBankSelectMsb) {
            next_.state.bankMsb = event.data2;
            next_.state.bankMsbEvent = selecting.event;
        } else {
            next_.state.bankLsb = event.data2;
            next_.state.bankLsbEvent = selecting.event;
        }
    }

    std::vector<VoiceChange> Result() { return std::move(changes_); }

private:
    VoiceChange next_;
    std::vector<VoiceChange> changes_;
};

} // namespace

SongPatches::SongPatches(song::Song& song, const StartBanks& start) : start_(start) {
    Found found = Collect(song);
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        // Events of one tick play in the order of their tracks.
        std::ranges::stable_sort(found[channel], {}, &Selecting::tick);
        ChangeList list(start[channel]);
        for (const Selecting& selecting : found[channel]) {
            list.Take(selecting);
        }
        changes_[channel] = list.Result();
    }
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
