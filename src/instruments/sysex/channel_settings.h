#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "song/song.h"

namespace tracksmith::instruments {

/// An event that sets something on a channel.
struct SettingEvent {
    song::EventLink event;
    std::int32_t track = 0;
    /// Counts the events in the order of playing.
    std::uint64_t order = 0;

    explicit operator bool() const { return static_cast<bool>(event); }
};

/// Whether the event sets something that stays until something else sets it: bank, program,
/// controllers, parameters, bend, pressure and modes, not notes and the likes of All Notes Off.
inline bool IsSetting(const song::MidiEvent& event) {
    if (event.length <= 0 || !event.IsChannelMessage() || event.status < song::kPolyPressure) {
        return false;
    }
    return event.Command() != song::kControlChange ||
           (event.data1 != song::kAllSoundOff && event.data1 != song::kAllNotesOff);
}

/// Whether a setting belongs to the choice of a voice: a bank select or a program change.
inline bool IsVoiceSetting(const song::MidiEvent& event) {
    return event.Command() == song::kProgramChange ||
           (event.Command() == song::kControlChange &&
            (event.data1 == song::kBankMsb || event.data1 == song::kBankLsb));
}

/// Settings of a channel of which the last one is kept and nothing else happens: controllers by
/// their numbers, channel pressure and pitch bend. With bank select MSB, data entries and modes
/// more happens.
inline constexpr std::uint8_t kPressureSlot = song::kControllers;
inline constexpr std::uint8_t kBendSlot = kPressureSlot + 1;
inline constexpr std::size_t kPlainSlots = kBendSlot + 1;
inline constexpr std::uint8_t kNoSlot = 255;

/// What the event sets of these, kNoSlot for another event. Nearly all settings of long songs are
/// such, so there is no branch.
inline std::uint8_t PlainSlot(const song::MidiEvent& event) {
    struct Way {
        std::uint8_t first;
        std::uint8_t mask; // of the first data byte, which counts for controllers
    };
    static constexpr std::size_t kOther = kPlainSlots;
    static constexpr auto kWays = [] {
        std::array<Way, 16> ways{};
        ways.fill({kOther, 0});
        ways.at(song::kControlChange >> 4U) = {0, 0x7F};
        ways.at(song::kChannelPressure >> 4U) = {kPressureSlot, 0};
        ways.at(song::kPitchBend >> 4U) = {kBendSlot, 0};
        return ways;
    }();
    static constexpr auto kSlots = [] {
        std::array<std::uint8_t, kPlainSlots + 1> slots{};
        for (std::size_t slot = 0; slot < kPlainSlots; ++slot) {
            const bool mode = slot >= song::kFirstModeMessage && slot < song::kControllers;
            slots.at(slot) = mode ? kNoSlot : static_cast<std::uint8_t>(slot);
        }
        for (const std::size_t other :
             {std::size_t{song::kBankMsb}, std::size_t{song::kDataMsb}, std::size_t{song::kDataLsb},
              std::size_t{song::kDataIncrement}, std::size_t{song::kDataDecrement}, kOther}) {
            slots.at(other) = kNoSlot;
        }
        return slots;
    }();
    const Way way = kWays[event.status >> 4U];
    const auto removed = static_cast<std::uint8_t>(event.length > 0 ? 0 : kNoSlot);
    return kSlots[way.first + (event.data1 & std::size_t{way.mask})] | removed;
}

/// The settings in force on one channel, as the events that made them: played again in their order
/// they bring an instrument that was reset into the same state. A bank select counts with the
/// program change that took it (MIDI 1.0), a data entry with the events that chose its registered
/// or non-registered parameter, Reset All Controllers with what it leaves (RP-015). One thread.
class ChannelSettings {
public:
    /// Takes an event of the channel that IsSetting. Throws std::bad_alloc.
    void Apply(const SettingEvent& setting);

    /// The same for one with a PlainSlot, which is `slot`; allocates nothing.
    void ApplyPlain(const SettingEvent& setting, std::uint8_t slot) {
        used_ = true;
        plain_[slot] = setting;
    }

    /// As after a reset of the instrument.
    void Clear();
    /// The part begins with its first voice: forgets program and bank.
    void ClearVoice();

    bool Empty() const { return !used_; }
    /// The events in force in their order. Throws std::bad_alloc.
    std::vector<SettingEvent> InForce() const;

private:
    // A data entry with the events that chose its parameter.
    struct Entry {
        SettingEvent data;
        SettingEvent msb;
        SettingEvent lsb;
    };
    struct Parameter {
        std::uint32_t key = 0;
        Entry msb;
        Entry lsb;
        std::vector<Entry> steps; // data increments and decrements
    };

    // The events that chose the parameter which data entries go to.
    struct Selection {
        bool registered = true;
        SettingEvent msb;
        SettingEvent lsb;
        SettingEvent before; // the last choice of the other kind, which was given up
    };

    void ApplyController(const SettingEvent& setting, std::uint8_t number);
    void Enter(const SettingEvent& setting, std::uint8_t number);
    Selection Selected() const;
    Parameter& ParameterOf(std::uint32_t key);
    void ResetControllers(const SettingEvent& setting);

    bool used_ = false;
    std::array<SettingEvent, kPlainSlots> plain_{}; // also bank select MSB
    std::vector<SettingEvent> keyPressures_;        // empty or one for each key
    // Program with its bank; the next program change will take the bank that is in `plain_`.
    SettingEvent program_;
    SettingEvent programMsb_;
    SettingEvent programLsb_;
    SettingEvent omni_;
    SettingEvent mono_;
    SettingEvent local_;
    SettingEvent resetAll_;
    std::vector<Parameter> parameters_;
    std::map<std::uint32_t, std::size_t> parameterPlaces_; // by key
    std::size_t lastParameter_ = 0;                        // data entries mostly come in pairs
};

} // namespace tracksmith::instruments
