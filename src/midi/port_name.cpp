#include "midi/port_name.h"

#include <algorithm>

namespace tracksmith::midi {
namespace {

constexpr std::string_view kDigits = "0123456789";

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of(kDigits) == std::string_view::npos;
}

/// "128:0" or "128".
bool IsAddress(std::string_view text) {
    const std::size_t colon = text.find(':');
    return IsNumber(text.substr(0, colon)) &&
           (colon == std::string_view::npos || IsNumber(text.substr(colon + 1)));
}

std::string_view WithoutWindowsPrefix(std::string_view name) {
    const std::size_t dash = name.find("- ");
    return dash != std::string_view::npos && IsNumber(name.substr(0, dash)) ? name.substr(dash + 2)
                                                                            : name;
}

std::string_view WithoutAlsaAddress(std::string_view name) {
    const std::size_t blank = name.find_last_of(' ');
    if (blank == std::string_view::npos) {
        return name;
    }
    const std::string_view last = name.substr(blank + 1);
    return last.find(':') != std::string_view::npos && IsAddress(last) ? name.substr(0, blank)
                                                                       : name;
}

/// Removes "(12)", "(128:0)" and "[12]", with the blanks before them.
std::string WithoutBrackets(std::string_view name) {
    std::string rest;
    while (!name.empty()) {
        const char closing = name[0] == '(' ? ')' : ']';
        const std::size_t end =
            name[0] == '(' || name[0] == '[' ? name.find(closing) : std::string_view::npos;
        if (end != std::string_view::npos && IsAddress(name.substr(1, end - 1))) {
            rest.erase(rest.find_last_not_of(' ') + 1);
            name.remove_prefix(end + 1);
        } else {
            rest += name[0];
            name.remove_prefix(1);
        }
    }
    return rest;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// Small letters, single blanks.
std::string Folded(std::string_view text) {
    std::string folded;
    for (const char c : Trimmed(text)) {
        if (c != ' ' || folded.back() != ' ') {
            folded += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return folded;
}

} // namespace

std::string NormalisedPortName(std::string_view name) {
    const std::string_view plain = WithoutAlsaAddress(WithoutWindowsPrefix(Trimmed(name)));
    const std::string stripped = Folded(WithoutBrackets(plain));
    // A name of nothing but numbers is better than none
    return stripped.empty() ? Folded(name) : stripped;
}

std::string PortNames::Unique(const std::string& name) {
    std::string unique = name;
    for (int number = 2; !given_.insert(unique).second; ++number) {
        unique = name + " (" + std::to_string(number) + ")";
    }
    return unique;
}

} // namespace tracksmith::midi
