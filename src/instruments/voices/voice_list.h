#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "instruments/voices/voice_lookup.h"

namespace tracksmith::instruments {

/// Voices and kits of an instrument.
struct VoiceList {
    /// The instrument's own voices come first, in the order of its families and categories, those
    /// of the sets that it inherits behind them.
    std::vector<const Voice*> voices;
    /// How many of them are its own.
    std::size_t own = 0;

    std::span<const Voice* const> Own() const { return std::span(voices).first(own); }
    std::span<const Voice* const> Inherited() const { return std::span(voices).subspan(own); }
};

/// Every voice and kit that can be chosen on the instrument: its own table, kits with fixed names
/// under these, and that of the Limex option; then XG and GM2 where it has them, as far as its own
/// tables do not use their numbers; General MIDI for an instrument that has none of these. Each is
/// listed under the name that FindVoice gives for its numbers. Any thread.
VoiceList VoicesOf(const VoiceTables& tables, InstrumentId instrument,
                   const LookupOptions& options = {});

/// Those of VoicesOf that the search for `text` finds (see VoiceSearch): among the own and among
/// the inherited ones those found by name first, those found by their group after them.
VoiceList SearchVoices(const VoiceTables& tables, InstrumentId instrument, std::string_view text,
                       const LookupOptions& options = {});

/// The table whose names an instrument is shown with: its own, else XG or GM2 where it surely has
/// them, else General MIDI.
InstrumentId NamingTable(const VoiceTables& tables, InstrumentId instrument);

} // namespace tracksmith::instruments
