#include "instruments/picker/write_voice.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "instruments/picker/voice_place.h"
#include "song/event_chain.h"

namespace tracksmith::instruments {
namespace {

using song::EventLink;

// Whoever may change the song may change its events.
EventLink Writable(song::Song& /*song*/, song::ConstEventLink link) {
    return EventLink(link.Unit());
}

/// One channel's changes of voice and how to write them.
class VoiceWriter {
public:
    VoiceWriter(song::Song& song, std::size_t channel, std::span<const VoiceChange> changes)
        : song_(song),
          status_(static_cast<std::uint8_t>(song::kControlChange | channel)),
          changes_(changes) {}

    // The later ones first, so that what this one adds cannot be missed there.
    void Write(std::vector<std::size_t> chosen, VoiceNumbers numbers) {
        std::ranges::sort(chosen, std::greater());
        std::size_t former = changes_.size();
        for (const std::size_t index : chosen) {
            if (index >= former) {
                continue; // named twice, or no such place
            }
            if (index + 1 < changes_.size() && index + 1 != former) {
                KeepVoice(changes_[index + 1], numbers);
            }
            WriteAt(changes_[index], numbers);
            former = index;
        }
    }

private:
    void WriteAt(const VoiceChange& change, VoiceNumbers numbers) {
        const bool same = change.state.Numbers() == numbers;
        if (!Rewrite(change.state.bankMsbEvent, numbers.msb) && !same) {
            AddMsb(change, numbers.msb);
        }
        if (!Rewrite(change.state.bankLsbEvent, numbers.lsb) && !same) {
            AddLsb(change, numbers.lsb);
        }
        Writable(song_, change.state.programEvent)->data1 = numbers.program;
    }

    // The place behind one that is rewritten must not take over its bank.
    void KeepVoice(const VoiceChange& next, VoiceNumbers numbers) {
        if (!next.state.bankMsbEvent && next.state.bankMsb != numbers.msb) {
            AddMsb(next, next.state.bankMsb);
        }
        if (!next.state.bankLsbEvent && next.state.bankLsb != numbers.lsb) {
            AddLsb(next, next.state.bankLsb);
        }
    }

    bool Rewrite(song::ConstEventLink link, std::uint8_t value) {
        const EventLink event = Writable(song_, link);
        if (event) {
            event->length = 3;
            event->data2 = value;
        }
        return static_cast<bool>(event);
    }

    // Before a bank LSB that stands at the same place already, since the MSB comes first.
    void AddMsb(const VoiceChange& change, std::uint8_t value) {
        EventLink place = Writable(song_, change.state.programEvent);
        for (EventLink event = place->prev; event && event->tick == change.tick;
             event = event->prev) {
            if (event == change.state.bankLsbEvent) {
                place = event;
            }
        }
        AddBefore(place, change, song::kBankMsb, value);
    }

    void AddLsb(const VoiceChange& change, std::uint8_t value) {
        AddBefore(Writable(song_, change.state.programEvent), change, song::kBankLsb, value);
    }

    void AddBefore(EventLink place, const VoiceChange& change, std::uint8_t controller,
                   std::uint8_t value) {
        const EventLink event =
            song::NewShortEvent(song_.pool, change.tick, status_, controller, value);
        event->timeMs = place->timeMs;
        song::InsertAfter(song_.tracks[change.track], place->prev, event);
    }

    song::Song& song_;
    std::uint8_t status_;
    std::span<const VoiceChange> changes_;
};

void MakeVoice(song::Song& song, std::size_t channel, VoiceNumbers numbers) {
    const VoicePlace place = PlaceForVoice(song, channel);
    if (!place.behind) {
        return;
    }
    const auto low = static_cast<std::uint8_t>(channel);
    const auto control = static_cast<std::uint8_t>(song::kControlChange | low);
    const auto program = static_cast<std::uint8_t>(song::kProgramChange | low);
    EventLink behind = place.behind;
    const auto add = [&](std::uint8_t status, std::uint8_t data1, std::uint8_t data2) {
        const EventLink event = song::NewShortEvent(song.pool, place.tick, status, data1, data2);
        event->timeMs = place.timeMs;
        song::InsertAfter(song.tracks[place.track], behind, event);
        behind = event;
    };
    add(control, song::kBankMsb, numbers.msb);
    add(control, song::kBankLsb, numbers.lsb);
    add(program, numbers.program, 0);
}

} // namespace

void WriteVoice(song::Song& song, std::size_t channel, std::span<const std::size_t> changes,
                VoiceNumbers numbers, const StartBanks& start) {
    const SongPatches patches(song, start);
    if (patches.Changes(channel).empty()) {
        MakeVoice(song, channel, numbers);
        return;
    }
    VoiceWriter writer(song, channel, patches.Changes(channel));
    writer.Write({changes.begin(), changes.end()}, numbers);
}

} // namespace tracksmith::instruments
