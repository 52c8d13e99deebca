#include "instruments/sysex/channel_settings.h"

#include <algorithm>

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kKeys = 128;

// What Reset All Controllers surely resets (RP-015).
constexpr auto kResetByAll =
    std::to_array<std::uint8_t>({song::kModulation, song::kExpression, song::kSustain,
                                 song::kPortamento, song::kSostenuto, song::kSoftPedal});

constexpr auto kSelects = std::to_array<std::uint8_t>(
    {song::kRegisteredMsb, song::kRegisteredLsb, song::kNonRegisteredMsb, song::kNonRegisteredLsb});

const SettingEvent& Later(const SettingEvent& a, const SettingEvent& b) {
    return a.order < b.order ? b : a;
}

std::uint8_t ValueOf(const SettingEvent& setting) {
    return setting.event->data2 & 0x7FU;
}

void Add(std::vector<SettingEvent>& list, const SettingEvent& setting) {
    if (setting) {
        list.push_back(setting);
    }
}

} // namespace

void ChannelSettings::Apply(const SettingEvent& setting) {
    used_ = true;
    const std::uint8_t data1 = setting.event->data1 & 0x7FU;
    switch (setting.event->Command()) {
        case song::kPolyPressure:
            keyPressures_.resize(kKeys);
            keyPressures_[data1] = setting;
            break;
        case song::kControlChange:
            ApplyController(setting, data1);
            break;
        case song::kProgramChange:
            program_ = setting;
            programMsb_ = plain_[song::kBankMsb];
            programLsb_ = plain_[song::kBankLsb];
            break;
        case song::kChannelPressure:
            plain_[kPressureSlot] = setting;
            break;
        case song::kPitchBend:
            plain_[kBendSlot] = setting;
            break;
        default:
            break;
    }
}

void ChannelSettings::ApplyController(const SettingEvent& setting, std::uint8_t number) {
    switch (number) {
        case song::kDataMsb:
        case song::kDataLsb:
        case song::kDataIncrement:
        case song::kDataDecrement:
            Enter(setting, number);
            break;
        case song::kResetAllControllers:
            ResetControllers(setting);
            break;
        case song::kLocalControl:
            local_ = setting;
            break;
        case song::kOmniOff:
        case song::kOmniOn:
            omni_ = setting;
            break;
        case song::kMono:
        case song::kPoly:
            mono_ = setting;
            break;
        default:
            plain_.at(number) = setting;
    }
}

// Choosing a parameter of the other kind gives up the former choice.
ChannelSettings::Selection ChannelSettings::Selected() const {
    const SettingEvent& registered =
        Later(plain_[song::kRegisteredMsb], plain_[song::kRegisteredLsb]);
    const SettingEvent& other =
        Later(plain_[song::kNonRegisteredMsb], plain_[song::kNonRegisteredLsb]);
    const auto since = [](const SettingEvent& choice, const SettingEvent& former) {
        return choice.order > former.order ? choice : SettingEvent{};
    };
    if (registered.order < other.order) {
        return {false, since(plain_[song::kNonRegisteredMsb], registered),
                since(plain_[song::kNonRegisteredLsb], registered), registered};
    }
    return {true, since(plain_[song::kRegisteredMsb], other),
            since(plain_[song::kRegisteredLsb], other), other};
}

ChannelSettings::Parameter& ChannelSettings::ParameterOf(std::uint32_t key) {
    if (lastParameter_ >= parameters_.size() || parameters_[lastParameter_].key != key) {
        const auto [known, isNew] = parameterPlaces_.try_emplace(key, parameters_.size());
        if (isNew) {
            parameters_.emplace_back().key = key;
        }
        lastParameter_ = known->second;
    }
    return parameters_[lastParameter_];
}

void ChannelSettings::Enter(const SettingEvent& setting, std::uint8_t number) {
    const Selection selected = Selected();
    if (!selected.msb || !selected.lsb) {
        return;
    }
    const std::uint32_t msb = ValueOf(selected.msb);
    const std::uint32_t lsb = ValueOf(selected.lsb);
    if (msb == song::kNoParameter && lsb == song::kNoParameter) {
        return;
    }
    Parameter& parameter = ParameterOf((selected.registered ? 1U << 14U : 0U) | msb << 7U | lsb);
    const Entry entry{setting, selected.msb, selected.lsb};
    if (number == song::kDataIncrement || number == song::kDataDecrement) {
        parameter.steps.push_back(entry);
        return;
    }
    (number == song::kDataMsb ? parameter.msb : parameter.lsb) = entry;
    // What both halves of the value have replaced since.
    const std::uint64_t whole = std::min(parameter.msb.data.order, parameter.lsb.data.order);
    if (!parameter.steps.empty() && parameter.steps.front().data.order < whole) {
        std::erase_if(parameter.steps, [=](const Entry& step) { return step.data.order < whole; });
    }
}

void ChannelSettings::ResetControllers(const SettingEvent& setting) {
    resetAll_ = setting;
    for (const std::uint8_t number : kResetByAll) {
        plain_.at(number) = {};
    }
    plain_[kBendSlot] = plain_[kPressureSlot] = {};
    keyPressures_.clear();
    for (const std::uint8_t number : kSelects) {
        plain_.at(number) = {};
    }
}

void ChannelSettings::Clear() {
    if (used_) {
        *this = {};
    }
}

void ChannelSettings::ClearVoice() {
    program_ = programMsb_ = programLsb_ = {};
    plain_[song::kBankMsb] = plain_[song::kBankLsb] = {};
}

std::vector<SettingEvent> ChannelSettings::InForce() const {
    std::vector<SettingEvent> list;
    if (!used_) {
        return list;
    }
    const Selection selected = Selected();
    for (const SettingEvent& setting : {program_, programMsb_, programLsb_, omni_, mono_, local_,
                                        resetAll_, selected.msb, selected.lsb, selected.before}) {
        Add(list, setting);
    }
    for (std::size_t slot = 0; slot < plain_.size(); ++slot) {
        if (std::ranges::count(kSelects, slot) == 0) {
            Add(list, plain_.at(slot));
        }
    }
    for (const SettingEvent& setting : keyPressures_) {
        Add(list, setting);
    }
    const auto addEntry = [&list](const Entry& entry) {
        Add(list, entry.msb);
        Add(list, entry.lsb);
        Add(list, entry.data);
    };
    for (const Parameter& parameter : parameters_) {
        addEntry(parameter.msb);
        addEntry(parameter.lsb);
        std::ranges::for_each(parameter.steps, addEntry);
    }
    std::ranges::sort(list, {}, &SettingEvent::order);
    const auto doubled = std::unique(
        list.begin(), list.end(), [](const auto& a, const auto& b) { return a.order == b.order; });
    list.erase(doubled, list.end());
    return list;
}

} // namespace tracksmith::instruments
