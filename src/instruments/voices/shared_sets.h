#pragma once

#include <cstdint>
#include <optional>

#include "instruments/catalogue.h"
#include "instruments/voices/voice.h"

/// Which of the common sound sets an instrument has beside its own voices.
namespace tracksmith::instruments {

/// Limex Tradition Exclusiv 200v3, whose voices an option adds to other Limex instruments.
inline constexpr InstrumentId kLimexTe200 = 58;

/// Yamaha instruments that follow XG: all but the Motif and S synthesisers, which have preset banks
/// of their own in its place.
bool HasXgSet(InstrumentId instrument);

/// Instruments that surely have the GM2 set, whether or not their own table lists it.
bool HasGm2Set(InstrumentId instrument);

/// Whether the option "with Tradition Exclusiv 200v3" exists for the instrument.
bool HasTe200Option(InstrumentId instrument);

/// Whether the bank with this MSB is made for drum kits on the instrument, known kits or not.
bool IsKitBank(InstrumentId instrument, std::uint8_t msb);

/// The numbers that are in force on a part of the instrument for which the song has chosen these:
/// where a bank select is missing, the bank in which the instrument starts. With `kits` for a drum
/// part.
VoiceNumbers NumbersInForce(InstrumentId instrument, bool kits, std::optional<std::uint8_t> msb,
                            std::optional<std::uint8_t> lsb, std::uint8_t program);

} // namespace tracksmith::instruments
