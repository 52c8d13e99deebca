#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "instruments/voices/voice_list.h"

namespace tracksmith::instruments {

/// Whether a family of voices was made to match a common set (General MIDI, GM2, GS, XG) or an
/// older model, rather than to sound best.
bool IsCommonSet(std::string_view family);

/// A voice of a song, by what is known of it without the instrument it was made for.
struct WantedVoice {
    bool isKit = false;
    /// General MIDI program 0-127 that it is a kind of.
    std::uint8_t program = 0;
    /// Its name in the set that the song was made for; may be empty.
    std::string name;
};

/// A voice of the target with how well it suits; more is better.
struct SuggestedVoice {
    const Voice* voice = nullptr;
    double points = 0;
    /// Its points as a share of those of a voice whose name is the wanted one; 0 to 1.
    double nearness = 0;
};

/// Finds the voices of an instrument that come nearest to others by name and category. The
/// instrument's own voices are preferred to the common sets that its table also lists. Any thread.
class VoiceSuggester {
public:
    /// Reads the voices of the instrument once. `tables` must outlive the object.
    VoiceSuggester(const VoiceTables& tables, InstrumentId instrument,
                   const LookupOptions& options = {});

    /// The instrument has voices of its own to suggest.
    bool HasVoices() const { return !candidates_.empty(); }

    /// The best `most` voices, the best first; empty where none suits.
    std::vector<SuggestedVoice> Suggest(const WantedVoice& wanted, std::size_t most) const;

    /// How near the instrument's voice with these numbers comes, see SuggestedVoice; nothing where
    /// it has none.
    std::optional<double> NearnessOf(const WantedVoice& wanted, VoiceNumbers numbers) const;

private:
    // A word of a candidate, by its number.
    struct CandidateWord {
        std::uint32_t word = 0;
        double weight = 0;
    };
    struct Candidate {
        const Voice* voice = nullptr;
        std::vector<CandidateWord> words;
        /// What speaks for or against it whatever is wanted.
        double points = 0;
    };
    // Points by the number of the word.
    using Points = std::vector<double>;

    Candidate MakeCandidate(const Voice& voice);
    void AddWords(Candidate& candidate, std::string_view text, double weight);
    Points PointsFor(const WantedVoice& wanted) const;
    void AddPoints(Points& points, std::string_view meaning) const;
    static double Sum(const Candidate& candidate, const Points& points);
    double Nearness(double sum, const WantedVoice& wanted, const Points& points) const;

    std::unordered_map<std::string, std::uint32_t> numbers_;
    std::vector<Candidate> candidates_;
};

} // namespace tracksmith::instruments
