#include "midi/backends/alsa/port_names.h"

#include <map>
#include <utility>

namespace tracksmith::midi::alsa {
namespace {

constexpr std::string_view kDigits = "0123456789";

// Cuts trailing digits and the character before them; false when they do not end the text.
bool CutNumber(std::string_view& text, char before) {
    const std::size_t last = text.find_last_not_of(kDigits);
    if (last == std::string_view::npos || last + 1 == text.size() || text[last] != before) {
        return false;
    }
    text = text.substr(0, last);
    return true;
}

std::string_view WithoutNumbers(std::string_view fullName) {
    std::string_view text = fullName;
    return CutNumber(text, ':') && CutNumber(text, ' ') ? text : fullName;
}

} // namespace

std::vector<NamedPort> NamePorts(const std::vector<std::string>& fullNames) {
    const std::string own = std::string(kClientName) + ":";
    std::vector<NamedPort> ports;
    std::map<std::string_view, int> seen;
    for (const std::string& fullName : fullNames) {
        if (fullName.empty() || fullName.starts_with(own)) {
            continue;
        }
        const std::string_view name = WithoutNumbers(fullName);
        const int count = ++seen[name];
        std::string productName(name);
        if (count > 1) {
            productName += " (" + std::to_string(count) + ")";
        }
        ports.push_back({fullName, std::move(productName)});
    }
    return ports;
}

} // namespace tracksmith::midi::alsa
