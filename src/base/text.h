#pragma once

#include <string_view>

namespace tracksmith {

/// The two languages in which every text of the program exists.
enum class Language { German, English };

/// German wording of a text. Typed, so that neither wording can be left out or misplaced.
struct De {
    std::string_view text;
};

/// English wording of a text.
struct En {
    std::string_view text;
};

/// One wording that both languages show.
struct Both {
    std::string_view text;
};

/// One text in its two wordings. Only compile-time constants make one.
struct Text {
    std::string_view german;
    std::string_view english;

    consteval Text(De de, En en) : german(de.text), english(en.text) {}
    consteval explicit Text(Both both) : german(both.text), english(both.text) {}

    /// The wording for `language`.
    constexpr std::string_view In(Language language) const {
        return language == Language::German ? german : english;
    }
};

} // namespace tracksmith
