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

/// Whether the event sets a controller that stands for itself: no bank select, no part of a
/// parameter, no mode message. Nearly all settings of long songs are such.
inline bool IsPlainController(const song::MidiEvent& event) {
    static constexpr auto kPlain = [] {
        std::array<bool, 256> plain{};
        for (std::size_t number = 0; number < song::kFirstModeMessage; ++number) {
            plain.at(number) = true;
        }
        for (const std::uint8_t other :
             {song::kBankMsb, song::kBankLsb, song::kDataMsb, song::kDataLsb, song::kDataIncrement,
              song::kDataDecrement, song::kNonRegisteredLsb, song::kNonRegisteredMsb,
              song::kRegisteredLsb, song::kRegisteredMsb}) {
            plain.at(other) = false;
        }
        return plain;
    }();
    return event.Command() == song::kControlChange && kPlain[event.data1] && event.length > 0;
}

/// The settings in force on one channel, as the events that made them: played again in their order
/// they bring an instrument that was reset into the same state. A bank select counts with the
/// program change that took it (MIDI 1.0), a data entry with the events that chose its registered
/// or non-registered parameter, Reset All Controllers with what it leaves (RP-015). One thread.
class ChannelSettings {
public:
    /// Takes an event of the channel that IsSetting. Throws std::bad_alloc.
    void Apply(const SettingEvent& setting);

    /// The same for one that IsPlainController, `number` of which it sets; allocates nothing.
    void ApplyPlain(const SettingEvent& setting, std::uint8_t number) {
        used_ = true;
        controllers_[number] = setting;
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
        Entry msb;
        Entry lsb;
        std::vector<Entry> steps; // data increments and decrements
    };

    void ApplyController(const SettingEvent& setting, std::uint8_t number);
    void Select(const SettingEvent& setting, bool registered, bool msb);
    void Enter(const SettingEvent& setting, std::uint8_t number);
    void ResetControllers(const SettingEvent& setting);
    void Deselect();

    bool used_ = false;
    std::array<SettingEvent, song::kControllers>
        controllers_{};                      // without banks, parameters and modes
    std::vector<SettingEvent> keyPressures_; // empty or one for each key
    // Program with its bank, and the bank that the next program change will take.
    SettingEvent program_;
    SettingEvent programMsb_;
    SettingEvent programLsb_;
    SettingEvent bankMsb_;
    SettingEvent bankLsb_;
    SettingEvent bend_;
    SettingEvent pressure_;
    SettingEvent omni_;
    SettingEvent mono_;
    SettingEvent local_;
    SettingEvent resetAll_;
    std::map<std::uint32_t, Parameter> parameters_;
    bool registered_ = true;
    SettingEvent selectedMsb_;
    SettingEvent selectedLsb_;
    SettingEvent selectedBefore_; // the choice of the other kind that was given up
};

} // namespace tracksmith::instruments
