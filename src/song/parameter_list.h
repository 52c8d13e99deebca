#pragma once

#include <cstddef>
#include <cstdint>
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

/// The parameters of a channel in the order in which they were last entered. Copying into a list
/// that has room for as many allocates nothing.
class ParameterList {
public:
    /// Makes room for so many parameters: until there are more, Enter allocates nothing. Throws
    /// std::bad_alloc.
    void Reserve(std::size_t parameters);

    /// A data entry (controller 6 when `msb`, else 38) for a parameter. Throws std::bad_alloc where
    /// there is no room.
    void Enter(ParameterNumber number, bool msb, Setting value);

    /// Forgets all parameters and keeps the room.
    void Clear();

    /// Null where nothing was entered for the parameter.
    const ParameterSetting* Find(ParameterNumber number) const;

    std::size_t Count() const { return entries_.size(); }

    /// Calls `visit(const ParameterSetting&)` for each.
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (std::uint16_t place = first_; place != kNone; place = entries_[place].after) {
            visit(entries_[place].setting);
        }
    }

private:
    // Above the number of parameters that there are.
    static constexpr std::uint16_t kNone = 0xFFFF;

    // Linked in their order.
    struct Entry {
        ParameterSetting setting;
        std::uint16_t before = kNone;
        std::uint16_t after = kNone;
    };

    std::size_t SlotOf(ParameterNumber number) const;
    void MakeSlots(std::size_t parameters);
    void Unlink(std::uint16_t place);
    void Append(std::uint16_t place);

    std::vector<Entry> entries_;
    // A hash table of places in entries_, a power of two of them and never more than half full.
    std::vector<std::uint16_t> slots_;
    std::uint16_t first_ = kNone;
    std::uint16_t last_ = kNone;
};

} // namespace tracksmith::song
