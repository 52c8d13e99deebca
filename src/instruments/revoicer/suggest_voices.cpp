#include "instruments/revoicer/suggest_voices.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "instruments/revoicer/voice_meanings.h"
#include "instruments/revoicer/voice_words.h"

namespace tracksmith::instruments {
namespace {

constexpr double kCategoryWeight = 0.6;
// A word of the voice's own name counts besides what its program means.
constexpr double kNamePoints = 2;
constexpr double kUnwantedWord = -0.5;
constexpr double kLeastPoints = 4;
constexpr double kCommonSet = -4;
constexpr double kGoodVersion = 0.5;
constexpr std::uint8_t kFirstEffect = 120;

constexpr auto kCommonFamilies =
    std::to_array<std::string_view>({"GM", "GM2", "GS", "XG", "Legacy", "CM-64", "GM/XG", "User"});
// Marks of a voice that is played with more life; they say nothing of its kind.
constexpr auto kGoodVersions =
    std::to_array<std::string_view>({"live", "sweet", "cool", "art", "revo", "natural"});
// Words of nothing but the construction of a name.
constexpr auto kFillers = std::to_array<std::string_view>({"s", "kit", "the", "and", "st", "x"});

template <typename Words>
bool Contains(const Words& words, std::string_view word) {
    return std::ranges::find(words, word) != words.end();
}

// Calls `add` for each "word=points".
template <typename Add>
void ForEachMeaning(std::string_view meaning, Add add) {
    while (!meaning.empty()) {
        const std::string_view part = meaning.substr(0, meaning.find(' '));
        const std::size_t sign = part.find('=');
        int points = 0;
        std::from_chars(part.data() + sign + 1, part.data() + part.size(), points);
        add(part.substr(0, sign), points);
        meaning.remove_prefix(std::min(part.size() + 1, meaning.size()));
    }
}

} // namespace

bool IsCommonSet(std::string_view family) {
    return Contains(kCommonFamilies, family);
}

VoiceSuggester::VoiceSuggester(const VoiceTables& tables, InstrumentId instrument,
                               const LookupOptions& options) {
    const VoiceList list = VoicesOf(tables, instrument, options);
    for (const Voice* voice : list.Own()) {
        candidates_.push_back(MakeCandidate(*voice));
    }
}

VoiceSuggester::Candidate VoiceSuggester::MakeCandidate(const Voice& voice) {
    Candidate candidate{&voice, {}, IsCommonSet(voice.family) ? kCommonSet : 0};
    AddWords(candidate, voice.name, 1);
    AddWords(candidate, voice.category, kCategoryWeight);
    return candidate;
}

void VoiceSuggester::AddWords(Candidate& candidate, std::string_view text, double weight) {
    for (std::string& word : VoiceWords(text)) {
        if (Contains(kGoodVersions, word)) {
            candidate.points += kGoodVersion;
        } else if (!Contains(kFillers, word)) {
            const auto next = static_cast<std::uint32_t>(numbers_.size());
            const std::uint32_t number = numbers_.try_emplace(std::move(word), next).first->second;
            const bool known = std::ranges::find(candidate.words, number, &CandidateWord::word) !=
                               candidate.words.end();
            if (!known) {
                candidate.words.push_back({number, weight});
            }
        }
    }
}

void VoiceSuggester::AddPoints(Points& points, std::string_view meaning) const {
    ForEachMeaning(meaning, [&](std::string_view word, int value) {
        const auto found = numbers_.find(std::string(word));
        if (found != numbers_.end()) {
            points[found->second] += value;
        }
    });
}

VoiceSuggester::Points VoiceSuggester::PointsFor(const WantedVoice& wanted) const {
    Points points(numbers_.size(), 0);
    if (wanted.isKit || wanted.program < kFirstEffect) {
        AddPoints(points, WordsAgainst());
    }
    AddPoints(points,
              wanted.isKit ? MeaningOfKit(wanted.program) : MeaningOfProgram(wanted.program));
    for (const std::string& word : VoiceWords(wanted.name)) {
        const auto found = numbers_.find(word);
        if (found != numbers_.end()) {
            points[found->second] += kNamePoints;
        }
    }
    return points;
}

double VoiceSuggester::Sum(const Candidate& candidate, const Points& points) {
    double sum = candidate.points;
    for (const CandidateWord& word : candidate.words) {
        const double value = points[word.word];
        sum += value == 0 ? kUnwantedWord * word.weight : value * word.weight;
    }
    return sum;
}

double VoiceSuggester::Nearness(double sum, const WantedVoice& wanted, const Points& points) const {
    double most = 0;
    for (const std::string& word : VoiceWords(wanted.name)) {
        const auto found = numbers_.find(word);
        most += found != numbers_.end() ? std::max(points[found->second], 0.0) : 0;
    }
    if (most <= 0) { // without a name: as much as one word of the meaning gives
        most = points.empty() ? 0 : *std::ranges::max_element(points);
    }
    return most > 0 ? std::clamp(sum / most, 0.0, 1.0) : 0;
}

std::optional<double> VoiceSuggester::NearnessOf(const WantedVoice& wanted,
                                                 VoiceNumbers numbers) const {
    const auto found = std::ranges::find_if(candidates_, [&](const Candidate& candidate) {
        return candidate.voice->IsKit() == wanted.isKit && candidate.voice->Numbers() == numbers;
    });
    if (found == candidates_.end()) {
        return std::nullopt;
    }
    const Points points = PointsFor(wanted);
    return Nearness(Sum(*found, points), wanted, points);
}

std::vector<SuggestedVoice> VoiceSuggester::Suggest(const WantedVoice& wanted,
                                                    std::size_t most) const {
    const Points points = PointsFor(wanted);
    std::vector<SuggestedVoice> found;
    for (const Candidate& candidate : candidates_) {
        if (candidate.voice->IsKit() != wanted.isKit) {
            continue;
        }
        const double sum = Sum(candidate, points);
        if (sum >= kLeastPoints) {
            found.push_back({candidate.voice, sum, Nearness(sum, wanted, points)});
        }
    }
    const auto better = [](const SuggestedVoice& a, const SuggestedVoice& b) {
        return a.points > b.points;
    };
    std::ranges::stable_sort(found, better); // of equals the one listed first
    found.resize(std::min(found.size(), most));
    return found;
}

} // namespace tracksmith::instruments
