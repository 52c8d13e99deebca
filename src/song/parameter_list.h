#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "song/event_link.h"
#include "song/midi_numbers.h"

namespace tracksmith::song {

/// A value that nothing has set.
inline constexpr std::uint16_t kUnset = 0xFFFF;

/// A value in effect on a channel.
struct Setting {
    std::uint16_t value = kUnset;
    /// The event that has set it; null where nothing or Reset All Controllers has.
    ConstEventLink event;

    bool Known() const { return value != kUnset; }
    friend bool operator==(const Setting&, const Setting&) = default;
};

/// Number of a registered (RPN) or non-registered (NRPN) parameter of MIDI 1.0.
struct ParameterNumber {
    bool registered = true;
    std::uint8_t msb = kNoParameter;
    std::uint8_t lsb = kNoParameter;

    /// False for the number that selects no parameter.
    bool Selects() const { return msb != kNoParameter || lsb != kNoParameter; }
    friend bool operator==(const ParameterNumber&, const ParameterNumber&) = default;
};

/// A parameter and the two bytes that were entered for it.
struct ParameterSetting {
    ParameterNumber number;
    Setting dataMsb;
    Setting dataLsb;
};

/// The parameters of a channel in the order in which they were last entered.
class ParameterList {
public:
    /// A data entry (controller 6 when `msb`, else 38) for a parameter. Throws std::bad_alloc.
    void Enter(ParameterNumber number, bool msb, Setting value);

    /// Null where nothing was entered for the parameter.
    const ParameterSetting* Find(ParameterNumber number) const;

    /// Calls `visit(const ParameterSetting&)` for each.
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (const ParameterSetting& entry : entries_) {
            if (entry.number.Selects()) {
                visit(entry);
            }
        }
    }

private:
    void DropGaps();

    // An entry that was entered again leaves a gap, one without a number, and goes to the end.
    std::vector<ParameterSetting> entries_;
    std::unordered_map<std::uint16_t, std::size_t> places_;
};

} // namespace tracksmith::song
