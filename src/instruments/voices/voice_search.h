#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/voices/voice.h"

namespace tracksmith::instruments {

/// How a search finds a voice.
enum class VoiceHit : std::uint8_t {
    None,
    /// At least one word stands in its category or family only.
    Group,
    /// Every word stands in its name or is one of its numbers.
    Name
};

/// `text` in small letters, those of Latin script (Latin-1) too: what searches and sorting compare.
std::string FoldedText(std::string_view text);

/// A search for voices by what the user types: words separated by blanks, each of which must occur
/// in name, category or family, or be a number. A number alone is the bank MSB, the LSB, or the
/// program counted from 1; "8/34" is a bank and "8/34/1" a bank with its program, also with `·`,
/// `.`, `:` or `-` between the numbers. Large and small letters of Latin script (Latin-1) count as
/// equal. Any thread.
class VoiceSearch {
public:
    explicit VoiceSearch(std::string_view text);

    /// No words: everything is found by name.
    bool IsEmpty() const { return words_.empty(); }

    VoiceHit Match(const Voice& voice) const;

private:
    struct Word {
        std::string folded;
        /// One, two or three numbers when the word is made of them.
        std::vector<unsigned> numbers;
    };

    static bool IsNumber(const Word& word, const Voice& voice);

    std::vector<Word> words_;
};

} // namespace tracksmith::instruments
