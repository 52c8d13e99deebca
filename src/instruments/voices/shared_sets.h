#pragma once

#include <cstdint>

#include "instruments/catalogue.h"

/// Which of the common sound sets an instrument has beside its own voices.
namespace tracksmith::instruments {

/// Bank select MSB of the GM2 voices and of the GM2 drum kits (General MIDI 2, RP-024).
inline constexpr std::uint8_t kGm2VoicesMsb = 121;
inline constexpr std::uint8_t kGm2KitsMsb = 120;
/// Bank select MSB of the user's own voices on XG arrangers.
inline constexpr std::uint8_t kUserVoicesMsb = 63;

/// Limex Tradition Exclusiv 200v3, whose voices an option adds to other Limex instruments.
inline constexpr InstrumentId kLimexTe200 = 58;

/// Yamaha instruments that follow XG: all but the Motif and S synthesisers, which have preset banks
/// of their own in its place.
bool HasXgSet(InstrumentId instrument);

/// Instruments that have the GM2 set although their own table need not list it.
bool HasGm2Set(InstrumentId instrument);

/// Whether the option "with Tradition Exclusiv 200v3" exists for the instrument.
bool HasTe200Option(InstrumentId instrument);

} // namespace tracksmith::instruments
