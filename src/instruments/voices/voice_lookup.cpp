#include "instruments/voices/voice_lookup.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "instruments/capabilities.h"
#include "instruments/voices/shared_sets.h"
#include "instruments/voices/texts.h"

namespace tracksmith::instruments {
namespace {

constexpr std::uint8_t Gm2Msb(bool kits) {
    return kits ? kGm2KitsMsb : kGm2VoicesMsb;
}

const Voice* FindIn(const VoiceTable* table, bool kits, VoiceNumbers numbers) {
    return table == nullptr ? nullptr : table->Find(kits, numbers);
}

// Bank select LSB 0 of a Roland SC is its default map; GM2 banks have no maps.
VoiceNumbers InDefaultMap(InstrumentId instrument, VoiceNumbers numbers,
                          const LookupOptions& options) {
    const Instrument* entry = FindInstrument(instrument);
    const bool hasMaps = entry != nullptr && !RolandScMaps(entry->name).empty();
    const bool isGm2 = numbers.msb == kGm2VoicesMsb || numbers.msb == kGm2KitsMsb;
    if (hasMaps && !isGm2 && numbers.lsb == 0) {
        numbers.lsb = static_cast<std::uint8_t>(RolandScMap(entry->name, options.rolandScMap));
    }
    return numbers;
}

const Voice* FindInGm(const VoiceTables& tables, bool kits, VoiceNumbers numbers) {
    return FindIn(tables.OwnTable(kGmSoundset), kits, numbers);
}

// General MIDI knows no banks, and one kit.
FoundVoice FindWithoutTable(const VoiceTables& tables, bool kits, VoiceNumbers numbers) {
    const std::uint8_t program = kits ? std::uint8_t{0} : numbers.program;
    return {FindInGm(tables, kits, {0, 0, program}), false};
}

// The common sets, in the order in which they come before each other.
const Voice* FindInherited(const VoiceTables& tables, InstrumentId instrument, bool kits,
                           VoiceNumbers numbers) {
    if (numbers.msb == Gm2Msb(kits)) {
        return FindIn(tables.OwnTable(kGm2Soundset), kits, numbers);
    }
    if (HasXgSet(instrument)) {
        if (numbers.msb == kUserVoicesMsb) {
            return nullptr;
        }
        if (const Voice* voice = FindIn(tables.OwnTable(kXgSoundset), kits, numbers)) {
            return voice;
        }
    }
    const bool bank0 = numbers.msb == 0 && numbers.lsb == 0;
    return bank0 ? FindInGm(tables, kits, numbers) : nullptr;
}

std::string NameOf(const FoundVoice& found, VoiceNumbers numbers, Language language) {
    return found.voice == nullptr ? texts::UnknownVoice(numbers, language)
                                  : std::string(found.voice->name);
}

struct FixedKit {
    InstrumentId instrument;
    std::uint8_t msb;
    std::uint8_t program;
    std::string_view name;
};

constexpr InstrumentId kTyros5 = 74;

constexpr auto kFixedKits = std::to_array<FixedKit>({
    {kTyros5, 126, 43, "PopLatin Kit 1 (Live!)"},
    {kTyros5, 126, 75, "New Arabic Kit 1 (Live!)"},
    {kTyros5, 126, 86, "AlpenFX (Live!)"},
    {kTyros5, 126, 118, "Brazil Kit 2 (Live!)"},
});

} // namespace

FoundVoice FindVoice(const VoiceTables& tables, InstrumentId instrument, bool kits,
                     VoiceNumbers numbers, const LookupOptions& options) {
    const VoiceTable* own = tables.OwnTable(instrument);
    numbers = InDefaultMap(instrument, numbers, options);
    if (const Voice* voice = FindIn(own, kits, numbers)) {
        return {voice, true};
    }
    if (options.limexTe200 && HasTe200Option(instrument)) {
        if (const Voice* voice = FindIn(tables.OwnTable(kLimexTe200), kits, numbers)) {
            return {voice, true};
        }
    }
    if (own == nullptr || instrument == kGmSoundset) {
        return FindWithoutTable(tables, kits, numbers);
    }
    return {FindInherited(tables, instrument, kits, numbers), false};
}

std::string ProgramChangeNames(const VoiceTables& tables, InstrumentId instrument,
                               VoiceNumbers numbers, const LookupOptions& options,
                               Language language) {
    return NameOf(FindVoice(tables, instrument, false, numbers, options), numbers, language);
}

std::string DrumsChangeName(const VoiceTables& tables, InstrumentId instrument,
                            VoiceNumbers numbers, const LookupOptions& options, Language language) {
    return NameOf(FindVoice(tables, instrument, true, numbers, options), numbers, language);
}

std::string PatchName(const VoiceTables& tables, const ChannelVoice& channel,
                      const LookupOptions& options, Language language) {
    const VoiceNumbers& numbers = channel.numbers;
    for (const FixedKit& kit : kFixedKits) {
        if (kit.instrument == channel.instrument && kit.msb == numbers.msb &&
            kit.program == numbers.program) {
            return std::string(kit.name);
        }
    }
    return channel.drums
               ? DrumsChangeName(tables, channel.instrument, numbers, options, language)
               : ProgramChangeNames(tables, channel.instrument, numbers, options, language);
}

} // namespace tracksmith::instruments
