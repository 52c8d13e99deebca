#pragma once

#include <vector>

#include "instruments/catalogue.h"
#include "instruments/voices/voice.h"

/// Drum kits that the program itself names. Any thread; the kits live as long as the program.
namespace tracksmith::instruments {

/// The kit with a fixed name, whatever a table says and whatever the LSB is; null without one.
const Voice* FixedKit(InstrumentId instrument, VoiceNumbers numbers);

/// All kits with fixed names of the instrument.
std::vector<const Voice*> FixedKits(InstrumentId instrument);

/// A kit of GM2 that the instrument spells otherwise than the common set; null for all others.
const Voice* RespeltKit(InstrumentId instrument, VoiceNumbers numbers);

} // namespace tracksmith::instruments
