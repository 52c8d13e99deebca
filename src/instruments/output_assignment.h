#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/catalogue.h"

namespace tracksmith::instruments {

/// Which instrument is connected to one MIDI output.
struct OutputAssignment {
    /// The instrument's name as set, also when the catalogue does not have it.
    std::string name;
    /// Code of the last name that the catalogue had.
    InstrumentId id = kGmSoundset;

    /// Sets the name and looks its code up; a name that the catalogue lacks leaves the code.
    void SetName(std::string_view instrumentName);
};

/// The outputs' instruments and the output that each channel plays to. One thread.
struct OutputTable {
    static constexpr std::size_t kChannels = 16;

    /// The first output is there always.
    std::vector<OutputAssignment> outputs{1};
    /// Index of an output for each channel; all 0 while one output plays everything.
    std::array<std::uint8_t, kChannels> outputOfChannel{};

    /// Instrument that governs `channel` (0-15). An index without an output counts as the first.
    InstrumentId InstrumentOfChannel(std::size_t channel) const;
};

} // namespace tracksmith::instruments
