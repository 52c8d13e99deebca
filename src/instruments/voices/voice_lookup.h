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

/// How surely numbers are named.
enum class VoiceMatch : std::uint8_t {
    /// Nobody knows the bank.
    Unknown,
    /// Named after another bank, because the instrument is not known to have this one.
    Similar,
    /// The voice stands at exactly these numbers, in the instrument's own table or in a common set
    /// (XG, GM2, General MIDI) that the instrument surely has.
    Exact
};

/// What three numbers select on an instrument.
struct FoundVoice {
    /// Null when no table has the numbers.
    const Voice* voice = nullptr;
    VoiceMatch match = VoiceMatch::Unknown;
};

/// The voice, or with `kits` the drum kit, that `numbers` select on `instrument`. Exact are, in
/// this order: kits with fixed names, the instrument's own table, that of the Limex option, XG and
/// GM2 where the instrument has them, and General MIDI at bank 0/0 for an instrument that has none
/// of these. Similar are: the same program at LSB 0 of the banks of XG and GM2, General MIDI at
/// bank 0/0, and for an instrument with neither table nor set General MIDI at every bank; for kits
/// the same program in the instrument's bank of kits, or the GM2 kit of that program. A voice is
/// never named by a kit nor a kit by a voice. Any thread.
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

/// A name and how sure it is.
struct NamedVoice {
    std::string name;
    VoiceMatch match = VoiceMatch::Unknown;
    /// The numbers that the name belongs to: those of the channel unless the match is Similar.
    VoiceNumbers numbers;
};

/// What a channel plays: some kits have fixed names that come before any table, everything else is
/// named as by DrumsChangeName or ProgramChangeNames.
NamedVoice NameVoice(const VoiceTables& tables, const ChannelVoice& channel,
                     const LookupOptions& options, Language language);

/// The name that NameVoice gives.
std::string PatchName(const VoiceTables& tables, const ChannelVoice& channel,
                      const LookupOptions& options, Language language);

} // namespace tracksmith::instruments
