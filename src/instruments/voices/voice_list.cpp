#include "instruments/voices/voice_list.h"

#include <algorithm>
#include <string>
#include <utility>

#include "instruments/voices/shared_sets.h"

namespace tracksmith::instruments {
namespace {

// In small letters; those of Latin-1 beyond ASCII are C3 80 to C3 9E in UTF-8, except C3 97.
std::string Folded(std::string_view text) {
    std::string out(text);
    bool afterC3 = false;
    for (char& c : out) {
        const auto byte = static_cast<unsigned char>(c);
        const bool latin = afterC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
        if (latin || (byte >= 'A' && byte <= 'Z')) {
            c = static_cast<char>(byte + 0x20);
        }
        afterC3 = byte == 0xC3;
    }
    return out;
}

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0) {
            words.push_back(Folded(text.substr(0, end)));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

bool HasAll(const Voice& voice, const std::vector<std::string>& words) {
    // No word has a line feed, so none is found across name and category.
    std::string text(voice.name);
    text.append(1, '\n').append(voice.category);
    text = Folded(text);
    return std::ranges::all_of(
        words, [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

/// Voices of several tables, of which the earlier ones take the numbers from the later ones.
class List {
public:
    void Add(const VoiceTable* table) {
        if (table == nullptr) {
            return;
        }
        for (const Voice& voice : table->Voices()) {
            if (!IsTaken(voice)) {
                voices_.push_back(&voice);
            }
        }
        tables_.push_back(table);
    }

    std::vector<const Voice*> Take() { return std::move(voices_); }

private:
    bool IsTaken(const Voice& voice) const {
        return std::ranges::any_of(tables_, [&](const VoiceTable* table) {
            return table->Find(voice.IsKit(), voice.Numbers()) != nullptr;
        });
    }

    std::vector<const Voice*> voices_;
    std::vector<const VoiceTable*> tables_;
};

} // namespace

std::vector<const Voice*> VoicesOf(const VoiceTables& tables, InstrumentId instrument,
                                   const LookupOptions& options) {
    List list;
    const VoiceTable* own = tables.OwnTable(instrument);
    list.Add(own);
    if (options.limexTe200 && HasTe200Option(instrument)) {
        list.Add(tables.OwnTable(kLimexTe200));
    }
    if (own == nullptr) {
        list.Add(tables.OwnTable(kGmSoundset));
        return list.Take();
    }
    if (HasXgSet(instrument)) {
        list.Add(tables.OwnTable(kXgSoundset));
    }
    if (HasGm2Set(instrument)) {
        list.Add(tables.OwnTable(kGm2Soundset));
    }
    return list.Take();
}

std::vector<const Voice*> SearchVoices(const VoiceTables& tables, InstrumentId instrument,
                                       std::string_view text, const LookupOptions& options) {
    std::vector<const Voice*> voices = VoicesOf(tables, instrument, options);
    const std::vector<std::string> words = Words(text);
    std::erase_if(voices, [&](const Voice* voice) { return !HasAll(*voice, words); });
    return voices;
}

} // namespace tracksmith::instruments
