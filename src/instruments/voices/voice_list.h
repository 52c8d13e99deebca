#pragma once

#include <string_view>
#include <vector>

#include "instruments/voices/voice_lookup.h"

namespace tracksmith::instruments {

/// Every voice and kit that can be chosen on the instrument: its own table in the order of its
/// file, then those of the sets that it inherits (the Limex option, XG, GM2) as far as its own
/// table does not use their numbers. General MIDI for an instrument without a table. Any thread.
std::vector<const Voice*> VoicesOf(const VoiceTables& tables, InstrumentId instrument,
                                   const LookupOptions& options = {});

/// Those of VoicesOf whose name or category contains every word of `text`, which are separated by
/// blanks; large and small letters of Latin script (Latin-1) count as equal. All for an empty text.
std::vector<const Voice*> SearchVoices(const VoiceTables& tables, InstrumentId instrument,
                                       std::string_view text, const LookupOptions& options = {});

} // namespace tracksmith::instruments
