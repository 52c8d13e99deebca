#include "instruments/sysex/channel_settings.h"

#include <algorithm>

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kKeys = 128;

// What Reset All Controllers surely resets (RP-015).
constexpr auto kResetByAll =
    std::to_array<std::uint8_t>({song::kModulation, song::kExpression, song::kSustain,
                                 song::kPortamento, song::kSostenuto, song::kSoftPedal});

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
            programMsb_ = bankMsb_;
            programLsb_ = bankLsb_;
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
        case song::kBankMsb:
            bankMsb_ = setting;
            break;
        case song::kBankLsb:
            bankLsb_ = setting;
            break;
        case song::kNonRegisteredLsb:
        case song::kNonRegisteredMsb:
            Select(setting, false, number == song::kNonRegisteredMsb);
            break;
        case song::kRegisteredLsb:
        case song::kRegisteredMsb:
            Select(setting, true, number == song::kRegisteredMsb);
            break;
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

void ChannelSettings::Select(const SettingEvent& setting, bool registered, bool msb) {
    if (registered != registered_) {
        const SettingEvent former =
            std::max(selectedMsb_, selectedLsb_,
                     [](const auto& a, const auto& b) { return a.order < b.order; });
        Deselect();
        selectedBefore_ = former;
        registered_ = registered;
    }
    (msb ? selectedMsb_ : selectedLsb_) = setting;
}

void ChannelSettings::Enter(const SettingEvent& setting, std::uint8_t number) {
    if (!selectedMsb_ || !selectedLsb_) {
        return;
    }
    const std::uint32_t msb = ValueOf(selectedMsb_);
    const std::uint32_t lsb = ValueOf(selectedLsb_);
    if (msb == song::kNoParameter && lsb == song::kNoParameter) {
        return;
    }
    Parameter& parameter = parameters_[(registered_ ? 1U << 14U : 0U) | msb << 7U | lsb];
    const Entry entry{setting, selectedMsb_, selectedLsb_};
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
    Deselect();
}

void ChannelSettings::Deselect() {
    selectedMsb_ = selectedLsb_ = selectedBefore_ = {};
    registered_ = true;
}

void ChannelSettings::Clear() {
    if (used_) {
        *this = {};
    }
}

void ChannelSettings::ClearVoice() {
    program_ = programMsb_ = programLsb_ = bankMsb_ = bankLsb_ = {};
}

std::vector<SettingEvent> ChannelSettings::InForce() const {
    std::vector<SettingEvent> list;
    if (!used_) {
        return list;
    }
    for (const SettingEvent& setting :
         {program_, programMsb_, programLsb_, bankMsb_, bankLsb_, omni_, mono_, local_, resetAll_,
          selectedMsb_, selectedLsb_, selectedBefore_}) {
        Add(list, setting);
    }
    for (const SettingEvent& setting : plain_) {
        Add(list, setting);
    }
    for (const SettingEvent& setting : keyPressures_) {
        Add(list, setting);
    }
    const auto addEntry = [&list](const Entry& entry) {
        Add(list, entry.msb);
        Add(list, entry.lsb);
        Add(list, entry.data);
    };
    for (const auto& [number, parameter] : parameters_) {
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
