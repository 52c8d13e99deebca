#pragma once

#include <cstdint>
#include <string>

#include "base/text.h"

#include "instruments/catalogue.h"
#include "instruments/voices/voice_tables.h"

namespace tracksmith::instruments {

/// Settings of the user that decide which voices an instrument has.
struct LookupOptions {
    /// Sound map that bank select LSB 0 stands for on Roland SC instruments, counted from 1 in the
    /// order of RolandScMaps; any other number means the newest.
    std::int32_t rolandScMap = 0;
    /// Limex HQ200, HQ260 and Quattropack have the voices of the Tradition Exclusiv 200v3 too.
    bool limexTe200 = false;
};

/// What three numbers select on an instrument.
struct FoundVoice {
    /// Null when no table has the numbers.
    const Voice* voice = nullptr;
    /// The instrument's own table has the voice; otherwise it is that of a common set (XG, GM2,
    /// General MIDI), which the instrument may word differently.
    bool exact = false;
};

/// The voice, or with `kits` the drum kit, that `numbers` select on `instrument`. Searched are the
/// instrument's own table, that of the Limex option, XG for Yamaha's XG instruments, GM2 at its
/// banks, and General MIDI at bank 0/0. An instrument without a table has General MIDI at every
/// bank, and with `kits` its one kit at every program. Bank MSB 63 and 121 are left to the user's
/// voices and to GM2. Any thread.
FoundVoice FindVoice(const VoiceTables& tables, InstrumentId instrument, bool kits,
                     VoiceNumbers numbers, const LookupOptions& options = {});

/// Name of the voice with these numbers, "unknown" and the numbers when no table has it.
std::string ProgramChangeNames(const VoiceTables& tables, InstrumentId instrument,
                               VoiceNumbers numbers, const LookupOptions& options,
                               Language language);

/// Name of the drum kit with these numbers, "unknown" and the numbers when no table has it.
std::string DrumsChangeName(const VoiceTables& tables, InstrumentId instrument,
                            VoiceNumbers numbers, const LookupOptions& options, Language language);

/// What a channel plays at present.
struct ChannelVoice {
    InstrumentId instrument = kGmSoundset;
    /// The channel plays a drum kit.
    bool drums = false;
    VoiceNumbers numbers;
};

/// Name of what a channel plays: some kits have fixed names that come before any table, everything
/// else is named as by DrumsChangeName or ProgramChangeNames.
std::string PatchName(const VoiceTables& tables, const ChannelVoice& channel,
                      const LookupOptions& options, Language language);

} // namespace tracksmith::instruments
