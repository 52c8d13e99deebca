#include "editing/side_state.h"

#include <cstddef>
#include <cstdlib>
#include <set>

namespace tracksmith::editing {
namespace {

using player::ChannelMessage;

std::uint32_t KeyOf(const song::ParameterNumber& number) {
    return (number.registered ? 1U << 14U : 0U) | std::uint32_t{number.msb} << 7U | number.lsb;
}

void Select(bool registered, unsigned msb, unsigned lsb, std::vector<ChannelMessage>& messages) {
    const auto put = [&](std::uint8_t number, unsigned value) {
        messages.push_back({song::kControlChange, number, static_cast<std::uint8_t>(value)});
    };
    put(registered ? song::kRegisteredMsb : song::kNonRegisteredMsb, msb);
    put(registered ? song::kRegisteredLsb : song::kNonRegisteredLsb, lsb);
}

// Back to the parameter that later data entry is for.
void SelectAgain(const song::ChannelState& channel, std::vector<ChannelMessage>& messages) {
    const bool registered = channel.registered;
    const auto value = [&](std::uint8_t number) -> unsigned {
        const song::Setting& setting = channel.controllers.at(number);
        return setting.Known() ? setting.value : song::kNoParameter;
    };
    Select(registered, value(registered ? song::kRegisteredMsb : song::kNonRegisteredMsb),
           value(registered ? song::kRegisteredLsb : song::kNonRegisteredLsb), messages);
}

// The parameters whose LSB the messages enter, which takes steps back.
std::set<std::uint32_t> EnteredBy(std::span<const ChannelMessage> messages) {
    std::set<std::uint32_t> entered;
    song::ChannelControls controls;
    for (const ChannelMessage& message : messages) {
        controls.Take(message.command, message.data1, message.data2, {});
        if (message.command == song::kControlChange && message.data1 == song::kDataLsb) {
            entered.insert(KeyOf(controls.Selected()));
        }
    }
    return entered;
}

int StepsIn(const SideState& side, std::uint32_t key) {
    const auto found = side.steps.find(key);
    return found == side.steps.end() ? 0 : found->second;
}

void PutSteps(const SidePair& pair, const song::ChannelState& channel,
              std::span<const ChannelMessage> composed, std::vector<ChannelMessage>& messages) {
    const std::set<std::uint32_t> entered = EnteredBy(composed);
    std::set<std::uint32_t> keys;
    for (const auto& [key, count] : pair.from.steps) {
        keys.insert(key);
    }
    for (const auto& [key, count] : pair.to.steps) {
        keys.insert(key);
    }
    const std::size_t before = messages.size();
    for (const std::uint32_t key : keys) {
        const int former = entered.contains(key) ? 0 : StepsIn(pair.from, key);
        const int steps = StepsIn(pair.to, key) - former;
        if (steps != 0) {
            Select((key >> 14U) != 0, key >> 7U & 0x7FU, key & 0x7FU, messages);
            messages.insert(
                messages.end(), static_cast<std::size_t>(std::abs(steps)),
                {song::kControlChange, steps > 0 ? song::kDataIncrement : song::kDataDecrement, 0});
        }
    }
    if (messages.size() != before) {
        SelectAgain(channel, messages);
    }
}

} // namespace

void SideState::Take(const song::MidiEvent& event, const song::ChannelState& channel) {
    const std::uint8_t number = event.data1 & 0x7FU;
    const std::uint8_t value = event.data2 & 0x7FU;
    if (event.Command() == song::kPolyPressure) {
        keyPressure.at(number) = value;
    } else if (event.Command() == song::kControlChange) {
        const song::ParameterNumber selected = channel.Selected();
        const bool selects =
            selected.msb != song::kNoParameter && selected.lsb != song::kNoParameter;
        switch (number) {
            case song::kDataIncrement:
            case song::kDataDecrement:
                if (selects) {
                    steps[KeyOf(selected)] += number == song::kDataIncrement ? 1 : -1;
                }
                break;
            case song::kDataLsb:
                steps.erase(KeyOf(selected));
                break;
            case song::kResetAllControllers:
                keyPressure.fill(0);
                break;
            case song::kOmniOff:
            case song::kOmniOn:
                omni = {number, value};
                break;
            case song::kMono:
            case song::kPoly:
                mono = {number, value};
                break;
            // All Sound Off and All Notes Off act at their place only. Local Control is about the
            // instrument's own keyboard, which no song plays.
            default:
                break;
        }
    }
}

void PutModes(const SidePair& pair, std::vector<ChannelMessage>& messages) {
    const auto put = [&](const auto& from, const auto& to, std::uint8_t usual) {
        if (from != to && (to || from->number != usual)) {
            const SideState::Mode mode = to.value_or(SideState::Mode{usual, 0});
            messages.push_back({song::kControlChange, mode.number, mode.value});
        }
    };
    put(pair.from.omni, pair.to.omni, song::kOmniOff);
    put(pair.from.mono, pair.to.mono, song::kPoly);
}

void PutSides(const SidePair& pair, const song::ChannelState& channel,
              std::span<const ChannelMessage> composed, std::vector<ChannelMessage>& messages) {
    PutSteps(pair, channel, composed, messages);
    for (std::size_t key = 0; key < pair.to.keyPressure.size(); ++key) {
        const std::uint8_t value = pair.to.keyPressure.at(key);
        if (value != pair.from.keyPressure.at(key)) {
            messages.push_back({song::kPolyPressure, static_cast<std::uint8_t>(key), value});
        }
    }
}

} // namespace tracksmith::editing
