#include "instruments/voices/voice_lookup.h"

#include "instruments/capabilities.h"
#include "instruments/voices/fixed_kits.h"
#include "instruments/voices/shared_sets.h"
#include "instruments/voices/texts.h"
#include "song/midi_numbers.h"

namespace tracksmith::instruments {
namespace {

// Bank select LSB 0 of a Roland SC is its default map; GM2 banks have no maps.
VoiceNumbers InDefaultMap(InstrumentId instrument, VoiceNumbers numbers,
                          const LookupOptions& options) {
    const Instrument* entry = FindInstrument(instrument);
    const bool hasMaps = entry != nullptr && !RolandScMaps(entry->name).empty();
    const bool isGm2 = numbers.msb == song::kGm2MelodyBank || numbers.msb == song::kGm2DrumBank;
    if (hasMaps && !isGm2 && numbers.lsb == 0) {
        numbers.lsb = static_cast<std::uint8_t>(RolandScMap(entry->name, options.rolandScMap));
    }
    return numbers;
}

/// One look-up: the same instrument and kind of voices, at several numbers.
class Finder {
public:
    Finder(const VoiceTables& tables, InstrumentId instrument, bool kits,
           const LookupOptions& options)
        : tables_(tables),
          instrument_(instrument),
          kits_(kits),
          options_(options),
          hasXg_(HasXgSet(instrument)),
          hasGm2_(HasGm2Set(instrument)),
          hasTable_(tables.HasOwnTable(instrument)) {}

    FoundVoice Find(VoiceNumbers numbers) const {
        if (const Voice* voice = Exact(numbers)) {
            return {voice, VoiceMatch::Exact};
        }
        const Voice* voice = kits_ ? SimilarKit(numbers) : SimilarVoice(numbers);
        return {voice, voice == nullptr ? VoiceMatch::Unknown : VoiceMatch::Similar};
    }

private:
    const Voice* In(InstrumentId table, VoiceNumbers numbers) const {
        const VoiceTable* found = tables_.OwnTable(table);
        return found == nullptr ? nullptr : found->Find(kits_, numbers);
    }

    const Voice* InOwn(VoiceNumbers numbers) const {
        if (const Voice* kit = kits_ ? FixedKit(instrument_, numbers) : nullptr) {
            return kit;
        }
        numbers = InDefaultMap(instrument_, numbers, options_);
        if (const Voice* voice = In(instrument_, numbers)) {
            return voice;
        }
        const bool te200 = options_.limexTe200 && HasTe200Option(instrument_);
        return te200 ? In(kLimexTe200, numbers) : nullptr;
    }

    const Voice* InSets(VoiceNumbers numbers) const {
        if (const Voice* voice = hasXg_ ? In(kXgSoundset, numbers) : nullptr) {
            return voice;
        }
        if (hasGm2_) {
            const Voice* kit = kits_ ? RespeltKit(instrument_, numbers) : nullptr;
            if (const Voice* voice = kit != nullptr ? kit : In(kGm2Soundset, numbers)) {
                return voice;
            }
        }
        return hasTable_ || hasXg_ ? nullptr : In(kGmSoundset, numbers);
    }

    const Voice* Exact(VoiceNumbers numbers) const {
        const Voice* voice = InOwn(numbers);
        return voice != nullptr ? voice : InSets(numbers);
    }

    const Voice* SimilarVoice(VoiceNumbers numbers) const {
        if (numbers.msb == song::kGm2MelodyBank) {
            const Voice* voice = In(kGm2Soundset, numbers);
            return voice != nullptr ? voice
                                    : In(kGm2Soundset, {song::kGm2MelodyBank, 0, numbers.program});
        }
        if (hasXg_) {
            // What XG itself falls back to.
            return numbers.msb == 0 ? Exact({0, 0, numbers.program}) : nullptr;
        }
        const bool anyBank = (!hasTable_ && !hasGm2_) || instrument_ == kGmSoundset;
        const bool bank0 = numbers.msb == 0 && numbers.lsb == 0;
        return anyBank || bank0 ? In(kGmSoundset, {0, 0, numbers.program}) : nullptr;
    }

    const Voice* SimilarKit(VoiceNumbers numbers) const {
        const std::uint8_t program = numbers.program;
        if (hasXg_ && numbers.msb != song::kGm2DrumBank) {
            const bool isSfx = numbers.msb == song::kXgEffectKitBank;
            return Exact({isSfx ? song::kXgEffectKitBank : song::kXgDrumBank, 0, program});
        }
        for (const std::uint8_t msb : {std::uint8_t{0}, song::kXgDrumBank}) {
            const Voice* kit = hasTable_ ? InOwn({msb, numbers.lsb, program}) : nullptr;
            if (kit != nullptr) {
                return kit;
            }
        }
        if (!hasGm2_ && program == 0) {
            return In(kGmSoundset, {0, 0, 0});
        }
        const Voice* respelt = RespeltKit(instrument_, {song::kGm2DrumBank, 0, program});
        return respelt != nullptr ? respelt : In(kGm2Soundset, {song::kGm2DrumBank, 0, program});
    }

    const VoiceTables& tables_;
    InstrumentId instrument_;
    bool kits_;
    const LookupOptions& options_;
    bool hasXg_;
    bool hasGm2_;
    bool hasTable_;
};

std::string NameOf(const FoundVoice& found, VoiceNumbers numbers, Language language) {
    return found.voice == nullptr ? texts::UnknownVoice(numbers, language)
                                  : std::string(found.voice->name);
}

} // namespace

FoundVoice FindVoice(const VoiceTables& tables, InstrumentId instrument, bool kits,
                     VoiceNumbers numbers, const LookupOptions& options) {
    return Finder(tables, instrument, kits, options).Find(numbers);
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

NamedVoice NameVoice(const VoiceTables& tables, const ChannelVoice& channel,
                     const LookupOptions& options, Language language) {
    const VoiceNumbers numbers = channel.numbers;
    const Voice* fixed = FixedKit(channel.instrument, numbers);
    const FoundVoice found =
        fixed != nullptr ? FoundVoice{fixed, VoiceMatch::Exact}
                         : FindVoice(tables, channel.instrument, channel.drums, numbers, options);
    const bool similar = found.match == VoiceMatch::Similar;
    return {NameOf(found, numbers, language), found.match,
            similar ? found.voice->Numbers() : numbers};
}

std::string PatchName(const VoiceTables& tables, const ChannelVoice& channel,
                      const LookupOptions& options, Language language) {
    return NameVoice(tables, channel, options, language).name;
}

} // namespace tracksmith::instruments
