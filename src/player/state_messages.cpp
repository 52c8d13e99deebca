#include "player/state_messages.h"

#include "song/shared_byte.h"

namespace tracksmith::player {
namespace {

using song::kUnset;
using song::ParameterNumber;
using song::ParameterSetting;
using song::Setting;

// Controllers that are sent in an order of their own, or that act on the next note only.
bool IsSentAlone(std::uint8_t controller) {
    return controller != song::kBankMsb && controller != song::kBankLsb &&
           controller != song::kDataMsb && controller != song::kDataLsb &&
           controller != song::kPortamentoControl &&
           (controller < song::kNonRegisteredLsb || controller > song::kRegisteredMsb);
}

// The mixer may have changed the event since it passed.
std::uint16_t ValueNow(const Setting& setting) {
    if (!setting.event) {
        return setting.value;
    }
    const unsigned data1 = song::ReadShared(setting.event->data1) & 0x7FU;
    const unsigned data2 = song::ReadShared(setting.event->data2) & 0x7FU;
    switch (setting.event->Command()) {
        case song::kControlChange:
            return static_cast<std::uint16_t>(data2);
        case song::kPitchBend:
            return static_cast<std::uint16_t>(data1 | (data2 << 7));
        default:
            return static_cast<std::uint16_t>(data1);
    }
}

struct NeutralData {
    std::uint16_t msb;
    std::uint16_t lsb;
};

// What a parameter has after a reset: those of MIDI 1.0 and the channel's sound parameters that GS
// and XG share, which count from the middle. Of others nobody knows.
std::optional<NeutralData> NeutralOf(ParameterNumber number) {
    constexpr std::uint8_t kModulationDepthRange = 5;
    constexpr std::uint8_t kSoundPage = 1;
    constexpr std::uint8_t kFirstDrumPage = 0x14;
    constexpr std::uint8_t kLastDrumPage = 0x19;
    constexpr NeutralData kMiddle{64, 0};
    if (!number.registered) {
        const bool known = number.msb == kSoundPage ||
                           (number.msb >= kFirstDrumPage && number.msb <= kLastDrumPage);
        return known ? std::optional(kMiddle) : std::nullopt;
    }
    if (number.msb != 0) {
        return std::nullopt;
    }
    switch (number.lsb) {
        case song::kBendRange:
            return NeutralData{song::kNeutralBendRange, 0};
        case song::kFineTuning:
        case song::kCoarseTuning:
            return kMiddle;
        case kModulationDepthRange:
            return NeutralData{0, 64};
        default:
            return std::nullopt;
    }
}

/// One run of Compose.
class Composer {
public:
    Composer(const song::ChannelState& wanted, const DeviceChannel& device, Extent extent,
             std::vector<ChannelMessage>& messages)
        : wanted_(wanted),
          device_(device.state),
          mode_(device.mode),
          drum_(device.drum),
          extent_(extent),
          messages_(messages) {}

    void Run() {
        Voice();
        for (std::uint8_t controller = 0; controller < song::kFirstModeMessage; ++controller) {
            if (IsSentAlone(controller)) {
                Value(song::kControlChange, controller, wanted_.controllers.at(controller),
                      device_.controllers.at(controller), song::NeutralController(controller));
            }
        }
        Parameters();
        Value(song::kPitchBend, 0, wanted_.bend, device_.bend, song::kBendCentre);
        Value(song::kChannelPressure, 0, wanted_.pressure, device_.pressure, 0);
    }

private:
    void Put(std::uint8_t command, unsigned data1, unsigned data2) {
        messages_.push_back(
            {command, static_cast<std::uint8_t>(data1), static_cast<std::uint8_t>(data2)});
    }
    void PutController(std::uint8_t controller, std::uint16_t value) {
        if (value != kUnset) {
            Put(song::kControlChange, controller, value);
        }
    }

    // The value that the device shall have; kUnset where it may keep what it has.
    static std::uint16_t Target(const Setting& wanted, bool deviceKnown, std::uint16_t neutral) {
        return wanted.Known() ? ValueNow(wanted) : deviceKnown ? neutral : kUnset;
    }
    bool Needed(std::uint16_t target, const Setting& wanted, const Setting& device) const {
        return target != kUnset && (target != device.value || extent_ == Extent::Anew ||
                                    (extent_ == Extent::Everything && wanted.Known()));
    }
    void Value(std::uint8_t command, std::uint8_t controller, const Setting& wanted,
               const Setting& device, std::uint16_t neutral) {
        const std::uint16_t target = Target(wanted, device.Known(), neutral);
        if (!Needed(target, wanted, device)) {
            return;
        }
        if (command == song::kControlChange) {
            Put(command, controller, target);
        } else {
            Put(command, target & 0x7FU, target >> 7U);
        }
    }

    // Without a known reset a drum channel keeps its bank: bank 0 would make some a melody channel.
    std::uint16_t NeutralBank() const {
        if (mode_) {
            return song::BankMsbAfterReset(*mode_, drum_);
        }
        const Setting& bank =
            device_.program.Known() ? device_.programBankMsb : device_.controllers[song::kBankMsb];
        return drum_ && bank.Known() ? bank.value : std::uint16_t{0};
    }

    void Voice() {
        const Setting& nextMsb = device_.controllers[song::kBankMsb];
        const Setting& nextLsb = device_.controllers[song::kBankLsb];
        // A bank that was selected since would go with the program.
        const std::uint16_t msb = Target(wanted_.programBankMsb, nextMsb.Known(), NeutralBank());
        const std::uint16_t lsb = Target(wanted_.programBankLsb, nextLsb.Known(), 0);
        const std::uint16_t program = Target(wanted_.program, device_.program.Known(), 0);
        const bool otherBank = (msb != kUnset && msb != device_.programBankMsb.value) ||
                               (lsb != kUnset && lsb != device_.programBankLsb.value);
        const bool send =
            program != kUnset && (otherBank || Needed(program, wanted_.program, device_.program));
        if (send) {
            PutController(song::kBankMsb, msb);
            PutController(song::kBankLsb, lsb);
            Put(song::kProgramChange, program, 0);
        }
        NextBank(send ? msb : nextMsb.value, send ? lsb : nextLsb.value, send);
    }

    // What was chosen since, for a program change that is still to come.
    void NextBank(std::uint16_t msbNow, std::uint16_t lsbNow, bool programSent) {
        const Setting& wantedMsb = wanted_.controllers[song::kBankMsb];
        const Setting& wantedLsb = wanted_.controllers[song::kBankLsb];
        const std::uint16_t msb = Target(wantedMsb, msbNow != kUnset, NeutralBank());
        const std::uint16_t lsb = Target(wantedLsb, lsbNow != kUnset, 0);
        const bool all = extent_ != Extent::Difference && !programSent &&
                         (wantedMsb.Known() || wantedLsb.Known());
        if (all || msb != msbNow || lsb != lsbNow) {
            PutController(song::kBankMsb, msb);
            PutController(song::kBankLsb, lsb);
        }
    }

    void Parameters() {
        const std::size_t before = messages_.size();
        wanted_.parameters.ForEach([this](const ParameterSetting& wanted) {
            const ParameterSetting* const device = device_.parameters.Find(wanted.number);
            Parameter(wanted, device != nullptr ? *device : ParameterSetting{});
        });
        device_.parameters.ForEach([this](const ParameterSetting& device) {
            if (wanted_.parameters.Find(device.number) == nullptr && NeutralOf(device.number)) {
                Parameter({device.number, {}, {}}, device);
            }
        });
        Selection(messages_.size() != before);
    }

    void Parameter(const ParameterSetting& wanted, const ParameterSetting& device) {
        const NeutralData neutral = NeutralOf(wanted.number).value_or(NeutralData{0, 0});
        const std::uint16_t msb = Target(wanted.dataMsb, device.dataMsb.Known(), neutral.msb);
        const std::uint16_t lsb = Target(wanted.dataLsb, device.dataLsb.Known(), neutral.lsb);
        if (!Needed(msb, wanted.dataMsb, device.dataMsb) &&
            !Needed(lsb, wanted.dataLsb, device.dataLsb)) {
            return;
        }
        const bool registered = wanted.number.registered;
        PutController(registered ? song::kRegisteredMsb : song::kNonRegisteredMsb,
                      wanted.number.msb);
        PutController(registered ? song::kRegisteredLsb : song::kNonRegisteredLsb,
                      wanted.number.lsb);
        PutController(song::kDataMsb, msb);
        PutController(song::kDataLsb, lsb);
    }

    // Where later data entry goes to.
    void Selection(bool moved) {
        const bool registered = wanted_.registered;
        const std::uint8_t msb = registered ? song::kRegisteredMsb : song::kNonRegisteredMsb;
        const std::uint8_t lsb = registered ? song::kRegisteredLsb : song::kNonRegisteredLsb;
        const Setting& wantedMsb = wanted_.controllers.at(msb);
        const Setting& wantedLsb = wanted_.controllers.at(lsb);
        // Half a number must not be completed by what an earlier place has left.
        const bool known = moved || registered != device_.registered ||
                           device_.controllers.at(msb).Known() ||
                           device_.controllers.at(lsb).Known();
        const std::uint16_t msbValue = Target(wantedMsb, known, song::kNoParameter);
        const std::uint16_t lsbValue = Target(wantedLsb, known, song::kNoParameter);
        if (moved || registered != device_.registered ||
            Needed(msbValue, wantedMsb, device_.controllers.at(msb)) ||
            Needed(lsbValue, wantedLsb, device_.controllers.at(lsb))) {
            PutController(msb, msbValue);
            PutController(lsb, lsbValue);
        }
    }

    const song::ChannelState& wanted_;
    const song::ChannelState& device_;
    std::optional<song::SynthMode> mode_;
    bool drum_;
    Extent extent_;
    std::vector<ChannelMessage>& messages_;
};

} // namespace

void StateMessages::Reserve(std::size_t parameters) {
    // Voice, controllers, the parameter selected at the end, bend, pressure.
    constexpr std::size_t kOthers = 5 + song::kControllers + 2 + 2;
    constexpr std::size_t kPerParameter = 4;
    messages_.reserve(kOthers + kPerParameter * parameters);
}

std::span<const ChannelMessage> StateMessages::Compose(const song::ChannelState& wanted,
                                                       const DeviceChannel& device, Extent extent) {
    messages_.clear();
    Composer(wanted, device, extent, messages_).Run();
    return messages_;
}

} // namespace tracksmith::player
