#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <tuple>

/// A model of a multi-timbral instrument, written from the public protocols alone: MIDI 1.0,
/// General MIDI (RP-003, RP-024), RP-015 (Reset All Controllers), and the GS and XG formats that
/// their makers publish. It sounds nothing; it tells in which state a note would begin.
namespace tracksmith::test {

/// How an instrument tells drums from melody on any channel.
enum class DrumRule : std::uint8_t {
    Fixed,   ///< channel 10, always
    BankXg,  ///< bank select MSB 127 or 126, XG part mode
    BankGm2, ///< bank select MSB 120, melody again by 121
    PartGs,  ///< GS part mode at the device number of the instrument
    ByReset, ///< as the last reset asks; GS and XG part mode always
};

/// A registered (MIDI 1.0) or non-registered parameter: registered, MSB, LSB.
using ParameterNumber = std::tuple<bool, std::uint8_t, std::uint8_t>;

/// What a channel sounds with.
struct ChannelState {
    bool drum = false;
    /// Whether a bank that some conventions take for drums was taken while no reset says which
    /// holds.
    bool drumUnsure = false;
    std::uint8_t program = 0;
    std::uint8_t bankMsb = 0;
    std::uint8_t bankLsb = 0;
    std::array<std::uint8_t, 128> controllers{};
    std::array<std::uint8_t, 128> keyPressure{};
    std::uint8_t pressure = 0;
    std::uint16_t bend = 8192;
    bool mono = false;
    /// 14-bit values that differ from those after a reset.
    std::map<ParameterNumber, std::uint16_t> parameters;
};

class InstrumentModel {
public:
    using Bytes = std::span<const std::uint8_t>;

    explicit InstrumentModel(DrumRule rule, std::uint8_t gsDevice = 0x10)
        : rule_(rule), gsDevice_(gsDevice) {
        Reset(Mode::Gm);
    }

    const ChannelState& Channel(std::size_t channel) const {
        return channels_.at(channel).sounding;
    }
    int Resets() const { return resets_; }

    /// A channel message.
    void Short(std::uint8_t status, std::uint8_t data1, std::uint8_t data2) {
        Part& part = channels_.at(status & 0x0FU);
        data1 &= 0x7F;
        data2 &= 0x7F;
        switch (status & 0xF0) {
            case 0xA0:
                part.sounding.keyPressure.at(data1) = data2;
                break;
            case 0xB0:
                Controller(part, data1, data2);
                break;
            case 0xC0:
                Program(part, data1);
                break;
            case 0xD0:
                part.sounding.pressure = data1;
                break;
            case 0xE0:
                part.sounding.bend = static_cast<std::uint16_t>(data1 | (data2 << 7));
                break;
            default:
                break;
        }
    }

    /// A system-exclusive message without its F0, with or without its F7.
    void Sysex(Bytes data) {
        if (!data.empty() && data.back() == 0xF7) {
            data = data.first(data.size() - 1);
        }
        if (const Mode mode = ModeOf(data); mode != Mode::None) {
            Reset(mode);
        } else if (IsRoland(data) && data.size() == 9 && data[4] == 0x40 &&
                   (data[5] & 0xF0) == 0x10 && data[6] == 0x15 && SumIsRight(data)) {
            const bool heard =
                rule_ == DrumRule::ByReset || (rule_ == DrumRule::PartGs && data[1] == gsDevice_);
            const std::size_t part = data[5] & 0x0FU;
            if (heard) {
                MakeDrums(channels_.at(part == 0 ? 9 : part < 10 ? part - 1 : part), data[7] != 0);
            }
        } else if (IsXg(data) && data.size() == 7 && data[3] == 8 && data[4] < 16 && data[5] == 7 &&
                   (rule_ == DrumRule::ByReset || rule_ == DrumRule::BankXg)) {
            MakeDrums(channels_.at(data[4]), data[6] != 0);
        }
    }

private:
    enum class Mode : std::uint8_t { None, Gm, Gm2, Gs, Xg, Own };
    static constexpr std::uint8_t kUnset = 0xFF;

    struct Part {
        ChannelState sounding;
        // Bank that the next program change will take.
        std::uint8_t nextMsb = kUnset;
        std::uint8_t nextLsb = 0;
        bool registered = true;
        std::uint8_t parameterMsb = kUnset;
        std::uint8_t parameterLsb = kUnset;
    };

    static bool IsRoland(Bytes d) {
        return d.size() >= 9 && d[0] == 0x41 && d[2] == 0x42 && d[3] == 0x12;
    }
    static bool SumIsRight(Bytes d) { return (d[4] + d[5] + d[6] + d[7] + d[8]) % 128 == 0; }
    static bool IsXg(Bytes d) {
        return d.size() >= 7 && d[0] == 0x43 && (d[1] & 0xF0) == 0x10 && d[2] == 0x4C;
    }
    static Mode ModeOf(Bytes d) {
        if (d.size() >= 4 && d[0] == 0x7E && d[2] == 9) {
            return d[3] == 3 ? Mode::Gm2 : d[3] == 1 || d[3] == 2 ? Mode::Gm : Mode::None;
        }
        const bool gs = IsRoland(d) && d.size() == 9 && d[5] == 0 && d[6] == 0x7F && SumIsRight(d);
        if (gs && ((d[4] == 0x40 && d[7] == 0) || (d[4] == 0 && d[7] <= 1))) {
            return Mode::Gs;
        }
        const bool xg = IsXg(d) && d.size() == 7 && d[3] == 0 && d[4] == 0 && d[6] == 0;
        if (xg && (d[5] == 0x7E || d[5] == 0x7F)) {
            return Mode::Xg;
        }
        const bool ketron = d.size() == 5 && d[0] == 0x26 && d[1] == 0x7B && d[2] == 0x0E;
        const bool technics = d.size() == 9 && d[0] == 0x50 && d[1] == 0x2C && d[4] == 0x1F;
        return ketron || technics ? Mode::Own : Mode::None;
    }

    void Reset(Mode mode) {
        ++resets_;
        mode_ = mode;
        for (std::size_t channel = 0; channel < channels_.size(); ++channel) {
            Part& part = channels_.at(channel);
            part = {};
            for (const auto& [number, value] : kDefaults) {
                part.sounding.controllers.at(number) = value;
            }
            MakeDrums(part, channel == 9);
        }
    }

    DrumRule RuleInForce() const {
        if (rule_ != DrumRule::ByReset) {
            return rule_;
        }
        return mode_ == Mode::Xg    ? DrumRule::BankXg
               : mode_ == Mode::Gm2 ? DrumRule::BankGm2
                                    : DrumRule::Fixed;
    }

    // A part that changes begins with its first voice.
    static void MakeDrums(Part& part, bool drum) {
        if (part.sounding.drum != drum) {
            part.sounding.drum = drum;
            part.sounding.drumUnsure = false;
            part.sounding.program = part.sounding.bankMsb = part.sounding.bankLsb = 0;
            part.nextMsb = kUnset;
            part.nextLsb = 0;
        }
    }

    // A bank that was not selected since the reset leaves the part what it is.
    void Program(Part& part, std::uint8_t program) {
        const DrumRule rule = RuleInForce();
        ChannelState& state = part.sounding;
        if (rule == DrumRule::BankXg && part.nextMsb != kUnset) {
            state.drum = part.nextMsb >= 126;
        } else if (rule == DrumRule::BankGm2 && (part.nextMsb == 120 || part.nextMsb == 121)) {
            state.drum = part.nextMsb == 120;
        } else {
            state.drumUnsure = part.nextMsb != kUnset && part.nextMsb >= 120 && !state.drum &&
                               mode_ != Mode::Gs && mode_ != Mode::Gm2;
        }
        state.program = program;
        // The melody bank of GM2 is the one that follows a reset.
        const bool first = part.nextMsb == kUnset || part.nextMsb == 121;
        state.bankMsb = first ? std::uint8_t{0} : part.nextMsb;
        state.bankLsb = part.nextLsb;
    }

    void Controller(Part& part, std::uint8_t number, std::uint8_t value) {
        switch (number) {
            case 0:
                part.nextMsb = value;
                break;
            case 32:
                part.nextLsb = value;
                break;
            case 98:
            case 99:
            case 100:
            case 101:
                Select(part, number, value);
                break;
            case 6:
            case 38:
            case 96:
            case 97:
                Enter(part, number, value);
                break;
            case 121:
                ResetControllers(part);
                break;
            case 126:
            case 127:
                part.sounding.mono = number == 126;
                break;
            default:
                if (number < 120) {
                    part.sounding.controllers.at(number) = value;
                }
        }
    }

    static void Select(Part& part, std::uint8_t number, std::uint8_t value) {
        const bool registered = number >= 100;
        if (part.registered != registered) {
            part.parameterMsb = part.parameterLsb = kUnset;
            part.registered = registered;
        }
        (number % 2 == 1 ? part.parameterMsb : part.parameterLsb) = value;
    }

    static std::uint16_t Default(const ParameterNumber& number) {
        if (number == ParameterNumber{true, 0, 0}) {
            return 2 << 7; // bend range of two semitones
        }
        return number == ParameterNumber{true, 0, 1} || number == ParameterNumber{true, 0, 2}
                   ? 64 << 7 // tuning
                   : 0;
    }

    static void Enter(Part& part, std::uint8_t number, std::uint8_t value) {
        const ParameterNumber parameter{part.registered, part.parameterMsb, part.parameterLsb};
        if (part.parameterMsb >= 127 || part.parameterLsb >= 127) { // none, or not known
            return;
        }
        auto& values = part.sounding.parameters;
        const auto known = values.find(parameter);
        int entered = known == values.end() ? Default(parameter) : known->second;
        entered = number == 6    ? (entered & 0x7F) | (value << 7)
                  : number == 38 ? (entered & 0x3F80) | value
                  : number == 96 ? std::min(entered + 1, 0x3FFF)
                                 : std::max(entered - 1, 0);
        values[parameter] = static_cast<std::uint16_t>(entered);
        if (entered == Default(parameter)) {
            values.erase(parameter);
        }
    }

    // What RP-015 names.
    static void ResetControllers(Part& part) {
        ChannelState& state = part.sounding;
        for (const std::size_t number : {1U, 64U, 65U, 66U, 67U}) {
            state.controllers.at(number) = 0;
        }
        state.controllers[11] = 127;
        state.bend = 8192;
        state.pressure = 0;
        state.keyPressure = {};
        part.registered = true;
        part.parameterMsb = part.parameterLsb = kUnset;
    }

    struct Value {
        std::uint8_t number;
        std::uint8_t value;
    };
    static constexpr Value kDefaults[] = {{7, 100}, {8, 64},  {10, 64}, {11, 127}, {71, 64},
                                          {72, 64}, {73, 64}, {74, 64}, {75, 64},  {76, 64},
                                          {77, 64}, {78, 64}, {91, 40}};

    DrumRule rule_;
    std::uint8_t gsDevice_;
    int resets_ = 0;
    Mode mode_ = Mode::None;
    std::array<Part, 16> channels_;
};

} // namespace tracksmith::test
