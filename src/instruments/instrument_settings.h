#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/text.h"

#include "app/settings/settings_store.h"
#include "instruments/capabilities.h"
#include "instruments/output_assignment.h"
#include "instruments/preparation.h"

namespace tracksmith::instruments {

/// A switch of the user for how songs are prepared.
struct SysexSwitch {
    /// Name of the value in the settings.
    const char* setting = "";
    /// The group that an instrument needs for it; without one it holds for all instruments.
    std::optional<Capability> capability;
    /// Where it is kept while a song is prepared.
    bool SysexOptions::*field = nullptr;
    Text label;
    Text hint;
};

/// All switches, those for all instruments first.
std::span<const SysexSwitch> SysexSwitches();

/// Most tracks that the number of the track for set-up messages can name.
inline constexpr std::int32_t kMostSysexTrack = 99;

/// An audio output of an instrument.
struct AudioOutput {
    std::string_view name;
    /// The instrument's own number of it.
    std::uint8_t value = 0;
};

/// The outputs that the parts of an instrument can be put on by messages, the usual one first;
/// empty where no such message is known.
std::span<const AudioOutput> AudioOutputs(std::string_view instrumentName);

/// The stored choices about instruments. Switches that need a capability are kept for each
/// instrument. Reads go to the settings every time; not for the playback thread.
class InstrumentSettings {
public:
    /// `store` must outlive the object.
    explicit InstrumentSettings(settings::SettingsStore& store) : store_(store) {}

    /// Instrument name of the output for all channels; "abc", which no instrument has, while none
    /// was chosen. Names that former versions stored are read as the present ones.
    std::string ReadInstrument();
    /// Whether an instrument was chosen at all, also one that the catalogue lacks.
    bool HasInstrument();
    /// Returns false when it could not be stored.
    bool WriteInstrument(std::string_view name);

    /// The same for any output, by its product name; empty for the output of all channels.
    std::string ReadInstrumentOf(std::string_view output);
    bool WriteInstrumentOf(std::string_view output, std::string_view name); ///< Likewise.

    /// Everything that preparing a song for this instrument depends on. Switches of groups that the
    /// instrument does not have keep their defaults.
    SysexOptions ReadOptions(std::string_view instrumentName);

    bool ReadSwitch(const SysexSwitch& choice, std::string_view instrumentName);
    bool WriteSwitch(const SysexSwitch& choice, std::string_view instrumentName, bool on);

    /// Track for set-up messages, counted from 0.
    std::int32_t ReadSysexTrack();
    bool WriteSysexTrack(std::int32_t track);

    /// Sound map of a Roland SC instrument, counted from 1, as RolandScMap makes it valid.
    std::int32_t ReadRolandScMap(std::string_view instrumentName);
    bool WriteRolandScMap(std::string_view instrumentName, std::int32_t map);

    /// Whether a Limex instrument has the Tradition Exclusiv 200v3 voices.
    bool ReadLimexTe200(std::string_view instrumentName);
    bool WriteLimexTe200(std::string_view instrumentName, bool on);

    /// Audio output of a part (0-15) by the instrument's number; 0, the usual one, for a number
    /// that is none of its AudioOutputs.
    std::uint8_t ReadAudioOutput(std::string_view instrumentName, std::size_t part);
    bool WriteAudioOutput(std::string_view instrumentName, std::size_t part, std::uint8_t value);

private:
    settings::SettingsStore& store_;
};

} // namespace tracksmith::instruments
