#include "instruments/voices/voice_list.h"

#include <algorithm>
#include <utility>

#include "instruments/voices/fixed_kits.h"
#include "instruments/voices/shared_sets.h"
#include "instruments/voices/voice_search.h"

namespace tracksmith::instruments {
namespace {

/// Voices of several tables, of which the earlier ones take the numbers from the later ones.
class ListBuilder {
public:
    explicit ListBuilder(InstrumentId instrument) : instrument_(instrument) {}

    void AddTable(const VoiceTable* table) {
        if (table == nullptr) {
            return;
        }
        for (const Voice& voice : table->Voices()) {
            if (!IsTaken(voice)) {
                const Voice* respelt =
                    voice.IsKit() ? RespeltKit(instrument_, voice.Numbers()) : nullptr;
                list_.voices.push_back(respelt != nullptr && !ownIsOpen_ ? respelt : &voice);
            }
        }
        tables_.push_back(table);
    }

    void AddFixedKits() {
        const std::vector<const Voice*> kits = FixedKits(instrument_);
        list_.voices.insert(list_.voices.end(), kits.begin(), kits.end());
    }

    void EndOwn() {
        list_.own = list_.voices.size();
        ownIsOpen_ = false;
    }

    VoiceList Take() { return std::move(list_); }

private:
    bool IsTaken(const Voice& voice) const {
        const VoiceNumbers numbers = voice.Numbers();
        return (voice.IsKit() && FixedKit(instrument_, numbers) != nullptr) ||
               std::ranges::any_of(tables_, [&](const VoiceTable* table) {
                   return table->Find(voice.IsKit(), numbers) != nullptr;
               });
    }

    InstrumentId instrument_;
    bool ownIsOpen_ = true;
    VoiceList list_;
    std::vector<const VoiceTable*> tables_;
};

} // namespace

VoiceList VoicesOf(const VoiceTables& tables, InstrumentId instrument,
                   const LookupOptions& options) {
    ListBuilder list(instrument);
    list.AddTable(tables.OwnTable(instrument));
    list.AddFixedKits();
    if (options.limexTe200 && HasTe200Option(instrument)) {
        list.AddTable(tables.OwnTable(kLimexTe200));
    }
    list.EndOwn();
    const bool hasXg = HasXgSet(instrument);
    const bool hasGm2 = HasGm2Set(instrument);
    if (hasXg) {
        list.AddTable(tables.OwnTable(kXgSoundset));
    }
    if (hasGm2) {
        list.AddTable(tables.OwnTable(kGm2Soundset));
    }
    if (!hasXg && !hasGm2 && !tables.HasOwnTable(instrument)) {
        list.AddTable(tables.OwnTable(kGmSoundset));
    }
    return list.Take();
}

VoiceList SearchVoices(const VoiceTables& tables, InstrumentId instrument, std::string_view text,
                       const LookupOptions& options) {
    const VoiceList all = VoicesOf(tables, instrument, options);
    const VoiceSearch search(text);
    VoiceList found;
    const auto take = [&](std::span<const Voice* const> voices) {
        for (const VoiceHit wanted : {VoiceHit::Name, VoiceHit::Group}) {
            std::ranges::copy_if(voices, std::back_inserter(found.voices), [&](const Voice* voice) {
                return search.Match(*voice) == wanted;
            });
        }
    };
    take(all.Own());
    found.own = found.voices.size();
    take(all.Inherited());
    return found;
}

InstrumentId NamingTable(const VoiceTables& tables, InstrumentId instrument) {
    if (tables.HasOwnTable(instrument)) {
        return instrument;
    }
    if (HasXgSet(instrument)) {
        return kXgSoundset;
    }
    return HasGm2Set(instrument) ? kGm2Soundset : kGmSoundset;
}

} // namespace tracksmith::instruments
