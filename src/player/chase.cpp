#include "player/chase.h"

#include <algorithm>
#include <limits>

#include "player/due_queue.h"
#include "song/shared_byte.h"

namespace tracksmith::player {
namespace {

// Controllers of MIDI 1.0 that are remembered in a way of their own.
constexpr std::uint8_t kBankMsb = 0;
constexpr std::uint8_t kBankLsb = 32;
constexpr std::uint8_t kDataMsb = 6;
constexpr std::uint8_t kDataLsb = 38;
constexpr std::uint8_t kDataIncrement = 96;
constexpr std::uint8_t kDataDecrement = 97;
constexpr std::uint8_t kNonRegisteredLsb = 98;
constexpr std::uint8_t kNonRegisteredMsb = 99;
constexpr std::uint8_t kRegisteredLsb = 100;
constexpr std::uint8_t kRegisteredMsb = 101;
constexpr std::uint8_t kFirstMode = 120;
constexpr std::uint8_t kResetAll = 121;

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

void Select(ParameterValue& selected, bool registered, std::uint8_t& part, std::uint8_t value) {
    if (selected.registered != registered) {
        selected = {};
        selected.registered = registered;
    }
    part = value;
}

bool Matters(const song::MidiEvent& event) {
    return event.length > 0 && (event.IsChannelMessage() ? event.status >= song::kControlChange
                                                         : event.status == song::kSystemExclusive);
}

std::int64_t FirstNoteTick(const song::Song& song) {
    std::int64_t first = kNever;
    for (const song::Track& track : song.tracks) {
        for (song::ConstEventLink event = track.first; event && event->tick < first;
             event = event->next) {
            if (event->IsNoteOn() && event->length > 0) {
                first = event->tick;
            }
        }
    }
    return first;
}

// Events of all tracks that matter and stand before the play cursors, in the order of playing.
class PlayOrder {
public:
    explicit PlayOrder(const song::Song& song) : song_(song), next_(song.tracks.size()) {
        queue_.Reserve(next_.size());
        for (std::size_t index = 0; index < next_.size(); ++index) {
            const song::Track& track = song.tracks[index];
            if (track.ignored == 0 && track.muted == 0) {
                next_[index] = SkipToMattering(track, track.first);
            }
            if (next_[index]) {
                queue_.Add({DueMs(track, *next_[index]), static_cast<std::uint32_t>(index)});
            }
        }
    }
    /// Null at the end.
    song::ConstEventLink Take() {
        if (queue_.Empty()) {
            return {};
        }
        const std::size_t index = queue_.First().track;
        const song::Track& track = song_.tracks[index];
        const song::ConstEventLink event = next_[index];
        next_[index] = SkipToMattering(track, event->next);
        if (next_[index]) {
            queue_.ReplaceFirst(DueMs(track, *next_[index]));
        } else {
            queue_.RemoveFirst();
        }
        return event;
    }

private:
    static song::ConstEventLink SkipToMattering(const song::Track& track,
                                                song::ConstEventLink event) {
        while (event != track.cursor && !Matters(*event)) {
            event = event->next;
        }
        return event == track.cursor ? song::ConstEventLink() : event;
    }

    const song::Song& song_;
    std::vector<song::ConstEventLink> next_;
    DueQueue queue_;
};

} // namespace

void ChannelChase::Remember(song::ConstEventLink event) {
    const std::uint8_t data1 = song::ReadShared(event->data1) & 0x7F;
    const std::uint8_t data2 = song::ReadShared(event->data2) & 0x7F;
    switch (event->Command()) {
        case song::kControlChange:
            events[data1] = event;
            RememberController(data1, data2);
            break;
        case song::kProgramChange:
            program = data1;
            programBank = bank;
            break;
        case song::kChannelPressure:
            pressure = data1;
            break;
        case song::kPitchBend:
            bendLow = data1;
            bendHigh = data2;
            break;
        default:
            break;
    }
}

void ChannelChase::RememberController(std::uint8_t controller, std::uint8_t value) {
    switch (controller) {
        case kBankMsb:
            bank.msb = value;
            break;
        case kBankLsb:
            bank.lsb = value;
            break;
        case kRegisteredMsb:
            Select(selected, true, selected.msb, value);
            break;
        case kRegisteredLsb:
            Select(selected, true, selected.lsb, value);
            break;
        case kNonRegisteredMsb:
            Select(selected, false, selected.msb, value);
            break;
        case kNonRegisteredLsb:
            Select(selected, false, selected.lsb, value);
            break;
        case kDataMsb:
        case kDataLsb:
            EnterData(controller, value);
            break;
        case kDataIncrement:
        case kDataDecrement:
            break;
        case kResetAll:
            ResetControllers();
            break;
        default:
            if (controller < kFirstMode) {
                values[controller] = value;
            }
    }
}

void ChannelChase::EnterData(std::uint8_t controller, std::uint8_t value) {
    if (selected.msb == kUnknown || selected.lsb == kUnknown) {
        return;
    }
    const auto known = std::find_if(
        parameters.begin(), parameters.end(),
        [this](const ParameterValue& parameter) { return parameter.SameParameter(selected); });
    if (known == parameters.end()) {
        parameters.push_back(selected);
    } else {
        std::rotate(known, known + 1, parameters.end());
    }
    ParameterValue& entered = parameters.back();
    (controller == kDataMsb ? entered.dataMsb : entered.dataLsb) = value;
}

// Reset All Controllers as RP-015 recommends it; a value that was never set need not be reset.
void ChannelChase::ResetControllers() {
    constexpr std::uint8_t kExpression = 11;
    constexpr auto kBackToZero = std::to_array<std::uint8_t>({1, 2, 4, 64, 65, 66, 67, 68, 69});
    for (const std::uint8_t controller : kBackToZero) {
        values[controller] = values[controller] == kUnknown ? kUnknown : std::uint8_t{0};
    }
    values[kExpression] = values[kExpression] == kUnknown ? kUnknown : std::uint8_t{127};
    if (bendHigh != kUnknown) {
        bendLow = 0;
        bendHigh = 64;
    }
    pressure = pressure == kUnknown ? kUnknown : std::uint8_t{0};
    selected = {};
}

song::EventLink FirstDue(song::Track& track, std::int64_t ms) {
    song::EventLink event = track.first;
    while (event && DueMs(track, *event) < ms) {
        event = event->next;
    }
    return event;
}

void SeekCursors(song::Song& song, std::int64_t ms) {
    for (song::Track& track : song.tracks) {
        track.cursor = FirstDue(track, ms);
    }
}

ChaseMemory CollectChase(const song::Song& song) {
    ChaseMemory memory;
    const std::int64_t firstNote = FirstNoteTick(song);
    PlayOrder order(song);
    while (const song::ConstEventLink event = order.Take()) {
        if (event->IsChannelMessage()) {
            memory.channels[event->Channel()].Remember(event);
        } else if (event->tick <= firstNote) {
            memory.setUp.push_back(event);
        }
    }
    return memory;
}

} // namespace tracksmith::player
