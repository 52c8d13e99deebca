#include "instruments/voices/voice_search.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <system_error>

namespace tracksmith::instruments {
namespace {

constexpr std::size_t kMostNumbers = 3;

// Length of the separator that the text begins with; 0 for none.
std::size_t SeparatorLength(std::string_view text) {
    static constexpr auto kSeparators = std::to_array<std::string_view>({"/", "·", ".", ":", "-"});
    const auto* found = std::ranges::find_if(
        kSeparators, [text](std::string_view separator) { return text.starts_with(separator); });
    return found == kSeparators.end() ? 0 : found->size();
}

// The numbers that a word is made of, none when it is anything else.
std::vector<unsigned> NumbersIn(std::string_view word) {
    std::vector<unsigned> numbers;
    while (numbers.size() < kMostNumbers) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        if (error != std::errc()) {
            break;
        }
        numbers.push_back(value);
        word.remove_prefix(static_cast<std::size_t>(end - word.data()));
        if (word.empty()) {
            return numbers;
        }
        const std::size_t separator = SeparatorLength(word);
        if (separator == 0) {
            break;
        }
        word.remove_prefix(separator);
    }
    return {};
}

bool Contains(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

} // namespace

// In small letters; those of Latin-1 beyond ASCII are C3 80 to C3 9E in UTF-8, except C3 97.
std::string FoldedText(std::string_view text) {
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

VoiceSearch::VoiceSearch(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0) {
            const std::string_view word = text.substr(0, end);
            words_.push_back({FoldedText(word), NumbersIn(word)});
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

bool VoiceSearch::IsNumber(const Word& word, const Voice& voice) {
    const std::array<unsigned, kMostNumbers> own{voice.msb, voice.lsb, voice.program + 1U};
    if (word.numbers.size() == 1) {
        return std::ranges::find(own, word.numbers.front()) != own.end();
    }
    return !word.numbers.empty() &&
           std::ranges::equal(word.numbers, std::span(own).first(word.numbers.size()));
}

VoiceHit VoiceSearch::Match(const Voice& voice) const {
    if (words_.empty()) {
        return VoiceHit::Name;
    }
    const std::string name = FoldedText(voice.name);
    std::string group;
    VoiceHit hit = VoiceHit::Name;
    for (const Word& word : words_) {
        if (Contains(name, word.folded) || IsNumber(word, voice)) {
            continue;
        }
        if (group.empty()) {
            // No word has a line feed, so none is found across the two.
            group = FoldedText(std::string(voice.category).append(1, '\n').append(voice.family));
        }
        if (!Contains(group, word.folded)) {
            return VoiceHit::None;
        }
        hit = VoiceHit::Group;
    }
    return hit;
}

} // namespace tracksmith::instruments
