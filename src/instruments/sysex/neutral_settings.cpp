#include "instruments/sysex/neutral_settings.h"

#include <optional>
#include <set>

namespace tracksmith::instruments {
namespace {

constexpr std::uint8_t kUnset = 0xFF;
constexpr std::uint8_t kCentre = 64;
// Channel mode messages of MIDI 1.0.
constexpr std::uint8_t kOmniOn = 125;
constexpr std::uint8_t kMono = 126;
constexpr std::uint8_t kPoly = 127;

// Registered parameters 0 to 2: bend range of two semitones, tuning.
std::optional<std::uint8_t> ParameterAfterReset(bool registered, std::uint8_t msb,
                                                std::uint8_t lsb) {
    if (!registered || msb != 0 || lsb > song::kCoarseTuning) {
        return std::nullopt;
    }
    return lsb == song::kBendRange ? song::kNeutralBendRange : kCentre;
}

class Undoing {
public:
    explicit Undoing(std::uint8_t channel) : channel_(channel) {}

    void Add(const song::MidiEvent& event) {
        const std::uint8_t data1 = event.data1 & 0x7FU;
        switch (event.Command()) {
            case song::kPolyPressure:
                Put(song::kPolyPressure, data1, 0);
                break;
            case song::kControlChange:
                AddController(data1, event.data2 & 0x7FU);
                break;
            case song::kProgramChange:
                program_ = true;
                break;
            case song::kChannelPressure:
                Put(song::kChannelPressure, 0, 0);
                break;
            default:
                Put(song::kPitchBend, 0, kCentre);
        }
    }

    NeutralSettings Take(std::uint8_t bankMsb) {
        if (bank_ || program_) {
            Put(song::kControlChange, song::kBankMsb, bankMsb);
            Put(song::kControlChange, song::kBankLsb, 0);
        }
        if (program_) {
            Put(song::kProgramChange, 0, 0);
        }
        if (chosen_) {
            Choose(song::kNoParameter, song::kNoParameter);
        }
        return std::move(result_);
    }

private:
    void Put(std::uint8_t command, std::uint8_t data1, std::uint8_t data2) {
        result_.messages.push_back({static_cast<std::uint8_t>(command | channel_), data1, data2});
    }

    void AddController(std::uint8_t number, std::uint8_t value) {
        switch (number) {
            case song::kBankMsb:
            case song::kBankLsb:
                bank_ = true;
                break;
            case song::kResetAllControllers:
                break;
            case song::kNonRegisteredLsb:
            case song::kNonRegisteredMsb:
            case song::kRegisteredLsb:
            case song::kRegisteredMsb:
                Select(number, value);
                break;
            case song::kDataMsb:
            case song::kDataLsb:
            case song::kDataIncrement:
            case song::kDataDecrement:
                AddParameter();
                break;
            case song::kLocalControl:
                Put(song::kControlChange, song::kLocalControl, 127);
                break;
            case song::kOmniOff:
            case kOmniOn:
                Put(song::kControlChange, song::kOmniOff, 0);
                break;
            case kMono:
            case kPoly:
                Put(song::kControlChange, kPoly, 0);
                break;
            default:
                Put(song::kControlChange, number, song::NeutralController(number));
        }
    }

    void Select(std::uint8_t number, std::uint8_t value) {
        const bool registered = number >= song::kRegisteredLsb;
        if (registered != registered_) {
            msb_ = lsb_ = kUnset;
            registered_ = registered;
        }
        (number % 2 == 1 ? msb_ : lsb_) = value;
        chosen_ = true;
    }

    void AddParameter() {
        if (!done_.insert({registered_, msb_, lsb_}).second) {
            return;
        }
        const auto value = ParameterAfterReset(registered_, msb_, lsb_);
        if (!value) {
            ++result_.unknown;
            return;
        }
        Choose(msb_, lsb_);
        Put(song::kControlChange, song::kDataMsb, *value);
        Put(song::kControlChange, song::kDataLsb, 0);
    }

    void Choose(std::uint8_t msb, std::uint8_t lsb) {
        Put(song::kControlChange, song::kRegisteredMsb, msb);
        Put(song::kControlChange, song::kRegisteredLsb, lsb);
    }

    std::uint8_t channel_;
    NeutralSettings result_;
    bool bank_ = false;
    bool program_ = false;
    bool chosen_ = false;
    bool registered_ = true;
    std::uint8_t msb_ = kUnset;
    std::uint8_t lsb_ = kUnset;
    std::set<std::tuple<bool, std::uint8_t, std::uint8_t>> done_;
};

} // namespace

NeutralSettings NeutralOf(const std::vector<SettingEvent>& settings, std::uint8_t channel,
                          std::uint8_t bankMsb) {
    Undoing undoing(channel);
    for (const SettingEvent& setting : settings) {
        undoing.Add(*setting.event);
    }
    return undoing.Take(bankMsb);
}

} // namespace tracksmith::instruments
