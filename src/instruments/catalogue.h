#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// What the program knows about the instruments that songs are prepared for.
namespace tracksmith::instruments {

/// Stable code of an instrument of the catalogue, 0 to 108.
using InstrumentId = std::uint8_t;

/// Number of instruments in the catalogue.
inline constexpr std::size_t kInstrumentCount = 109;

/// General MIDI: what an instrument without knowledge of its own is treated as.
inline constexpr InstrumentId kGmSoundset = 0;
inline constexpr InstrumentId kGm2Soundset = 16;
inline constexpr InstrumentId kXgSoundset = 19;

/// An instrument of the catalogue.
struct Instrument {
    /// Display name, which is also the value in the settings. Begins with the maker.
    std::string_view name;
    InstrumentId id = kGmSoundset;
    /// Its voices and drum kits follow Yamaha's XG; Motif and S synthesisers have preset banks of
    /// their own in its place.
    bool xg = false;
};

/// All instruments in the order in which they are listed. Any thread.
std::span<const Instrument> Catalogue();

/// The first instrument of exactly this name; null without one.
const Instrument* FindInstrument(std::string_view name);

/// The instrument with this code; null for a code above 108.
const Instrument* FindInstrument(InstrumentId id);

/// The name as it is stored today for a name that older settings may hold.
std::string_view CurrentName(std::string_view name);

/// The maker that the name of an instrument begins with: what a list groups by.
std::string_view MakerOf(const Instrument& instrument);

} // namespace tracksmith::instruments
